#include "support/RealMouse.h"

#include <cstdint>

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>

namespace cv::test
{
namespace
{
constexpr auto leftButton = 1u;

::Display* toDisplay (void* display)
{
    return static_cast<::Display*> (display);
}
} // namespace

RealMouse::RealMouse()
{
    auto* const opened = XOpenDisplay (nullptr);
    auto unused = 0;

    if (opened == nullptr)
        return;

    if (XTestQueryExtension (opened, &unused, &unused, &unused, &unused) == True)
        display = opened;
    else
        XCloseDisplay (opened);
}

RealMouse::~RealMouse()
{
    if (display != nullptr)
        XCloseDisplay (toDisplay (display));
}

void RealMouse::moveTo (void* window, juce::Point<int> place)
{
    auto* const server = toDisplay (display);
    auto x = 0, y = 0;
    ::Window child = 0;
    XTranslateCoordinates (server, (::Window) reinterpret_cast<std::uintptr_t> (window), DefaultRootWindow (server),
                           place.x, place.y, &x, &y, &child);
    XTestFakeMotionEvent (server, -1, x, y, CurrentTime);
    XSync (server, False);
}

void RealMouse::press()
{
    XTestFakeButtonEvent (toDisplay (display), leftButton, True, CurrentTime);
    XSync (toDisplay (display), False);
}

void RealMouse::release()
{
    XTestFakeButtonEvent (toDisplay (display), leftButton, False, CurrentTime);
    XSync (toDisplay (display), False);
}
} // namespace cv::test
