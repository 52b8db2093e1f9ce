#include "DisplayConnection.h"

#include "RenderError.h"

#include <algorithm>
#include <cstdint>
#include <span>

#include <X11/Xlib.h>
#include <X11/Xutil.h>

namespace cv::render
{
namespace
{
/** Set by an error on any line of this process to the server. Without a handler the first one would end it. */
bool hasFailed = false;

int noteError (::Display*, XErrorEvent*)
{
    hasFailed = true;
    return 0;
}

/** Makes the names known that JUCE only looks up. A window manager makes them known; a server without one
    would take them for an error.
*/
void introduceNames (::Display& display)
{
    for (const auto* name : { "WM_PROTOCOLS", "WM_TAKE_FOCUS", "WM_DELETE_WINDOW", "_NET_WM_PING", "WM_CHANGE_STATE",
                              "WM_STATE", "_NET_WM_WINDOW_TYPE", "_NET_WM_STATE", "_NET_WM_STATE_HIDDEN" })
        XInternAtom (&display, name, False);

    XSync (&display, False);
}

::Window toWindow (void* handle)
{
    return (::Window) reinterpret_cast<std::uintptr_t> (handle);
}

int countLevels (::Display& display, ::Window window)
{
    XWindowAttributes attributes;
    ::Window root = 0, parent = 0, *children = nullptr;
    unsigned numChildren = 0;

    if (XGetWindowAttributes (&display, window, &attributes) == 0 || attributes.map_state != IsViewable
        || XQueryTree (&display, window, &root, &parent, &children, &numChildren) == 0)
        return 0;

    auto deepest = 0;

    for (const auto child : std::span (children, numChildren))
        deepest = std::max (deepest, countLevels (display, child));

    if (children != nullptr)
        XFree (children);

    return deepest + 1;
}

/** The bits of a pixel that hold a colour, brought to 8 bits. */
juce::uint8 extractColour (unsigned long pixel, unsigned long mask)
{
    const auto lowestBit = mask & (~mask + 1);
    return lowestBit == 0 ? (juce::uint8) 0 : (juce::uint8) (((pixel & mask) / lowestBit) * 255 / (mask / lowestBit));
}

juce::Image toImage (XImage& source)
{
    juce::Image image (juce::Image::RGB, source.width, source.height, false, juce::SoftwareImageType());
    const juce::Image::BitmapData pixels (image, juce::Image::BitmapData::writeOnly);

    for (auto y = 0; y < source.height; ++y)
        for (auto x = 0; x < source.width; ++x)
        {
            const auto pixel = XGetPixel (&source, x, y);
            pixels.setPixelColour (x, y,
                                   juce::Colour (extractColour (pixel, source.red_mask),
                                                 extractColour (pixel, source.green_mask),
                                                 extractColour (pixel, source.blue_mask)));
        }

    return image;
}
} // namespace

struct DisplayConnection::Server
{
    Server() : display (XOpenDisplay (nullptr)) {}

    ~Server()
    {
        if (display != nullptr)
            XCloseDisplay (display);
    }

    ::Display* display;
};

DisplayConnection::DisplayConnection() : server (std::make_unique<Server>())
{
    const auto name = juce::SystemStats::getEnvironmentVariable ("DISPLAY", {});

    if (server->display == nullptr)
        throw RenderError (name.isEmpty() ? "no display: DISPLAY is not set"
                                          : "no display: there is no X server at " + name.quoted());

    XSetErrorHandler (noteError);
    introduceNames (*server->display);
}

DisplayConnection::~DisplayConnection() = default;

int DisplayConnection::countVisibleLevels (void* window) const
{
    return countLevels (*server->display, toWindow (window));
}

juce::Image DisplayConnection::capture (void* window) const
{
    auto* const display = server->display;
    XWindowAttributes attributes;

    hasFailed = false;
    XRaiseWindow (display, toWindow (window));
    XGetWindowAttributes (display, toWindow (window), &attributes);
    const std::unique_ptr<XImage, decltype ([] (XImage* image) { XDestroyImage (image); })> image (
        XGetImage (display, toWindow (window), 0, 0, (unsigned) attributes.width, (unsigned) attributes.height,
                   AllPlanes, ZPixmap));

    if (image == nullptr || hasFailed)
        throw RenderError ("the editor's window can't be captured: it has to lie on the screen with all of its area");

    return toImage (*image);
}
} // namespace cv::render
