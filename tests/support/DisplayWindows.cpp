#include "support/DisplayWindows.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>

#include <memory>

namespace cv::test
{
namespace
{
template <typename Type>
using XPointer = std::unique_ptr<Type, decltype ([] (Type* memory) { XFree (memory); })>;

bool canBeSeen (Display& display, ::Window window)
{
    XWindowAttributes attributes;
    return XGetWindowAttributes (&display, window, &attributes) != 0 && attributes.map_state == IsViewable;
}

std::string getTitle (Display& display, ::Window window)
{
    // Either Latin-1 or UTF-8, which are the same in plain letters.
    XTextProperty title {};
    XGetWMName (&display, window, &title);
    const XPointer<unsigned char> owner (title.value);
    return title.value != nullptr ? reinterpret_cast<const char*> (title.value) : "";
}

::Window findBelow (Display& display, ::Window parent, const std::string& title)
{
    ::Window root = 0, parentOfParent = 0, *children = nullptr;
    unsigned numChildren = 0;

    if (XQueryTree (&display, parent, &root, &parentOfParent, &children, &numChildren) == 0)
        return 0;

    const XPointer<::Window> owner (children);

    for (auto i = 0u; i < numChildren; ++i)
    {
        if (getTitle (display, children[i]) == title && canBeSeen (display, children[i]))
            return children[i];

        if (const auto found = findBelow (display, children[i], title))
            return found;
    }

    return 0;
}

/** Windows come and go while they are being looked at: what has gone is an error that matters to no one. */
class ErrorsIgnored
{
public:
    ErrorsIgnored() : formerHandler (XSetErrorHandler ([] (Display*, XErrorEvent*) { return 0; })) {}

    ~ErrorsIgnored() { XSetErrorHandler (formerHandler); }

    ErrorsIgnored (const ErrorsIgnored&) = delete;
    ErrorsIgnored& operator= (const ErrorsIgnored&) = delete;

private:
    const XErrorHandler formerHandler;
};
} // namespace

struct DisplayWindows::Connection
{
    explicit Connection (Display* d) : display (d) {}

    ~Connection() { XCloseDisplay (display); }

    Display* display;
};

DisplayWindows::DisplayWindows()
{
    if (auto* const display = XOpenDisplay (nullptr))
        connection = std::make_unique<Connection> (display);
}

DisplayWindows::~DisplayWindows() = default;

DisplayWindows::Window DisplayWindows::find (const std::string& title) const
{
    const ErrorsIgnored ignored;
    return findBelow (*connection->display, DefaultRootWindow (connection->display), title);
}

void DisplayWindows::requestClose (Window window) const
{
    const ErrorsIgnored ignored;
    auto* const display = connection->display;

    XEvent event {};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom (display, "WM_PROTOCOLS", False);
    event.xclient.format = 32;
    event.xclient.data.l[0] = (long) XInternAtom (display, "WM_DELETE_WINDOW", False);
    event.xclient.data.l[1] = CurrentTime;

    XSendEvent (display, window, False, NoEventMask, &event);
    XSync (display, False);
}
} // namespace cv::test
