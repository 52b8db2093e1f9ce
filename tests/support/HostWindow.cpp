#include "support/HostWindow.h"

#include <cstdint>

#include <X11/Xlib.h>

namespace cv::test
{
namespace
{
::Display* toDisplay (void* display)
{
    return static_cast<::Display*> (display);
}
} // namespace

HostWindow::HostWindow (juce::Rectangle<int> bounds) : display (XOpenDisplay (nullptr))
{
    if (display == nullptr)
        return;

    auto* const server = toDisplay (display);
    XSetWindowAttributes attributes {};
    attributes.override_redirect = True;
    window = XCreateWindow (server, DefaultRootWindow (server), bounds.getX(), bounds.getY(),
                            (unsigned) bounds.getWidth(), (unsigned) bounds.getHeight(), 0, CopyFromParent, InputOutput,
                            nullptr, CWOverrideRedirect, &attributes);
    XMapRaised (server, window);
    XSync (server, False);
}

HostWindow::~HostWindow()
{
    if (display != nullptr)
        XCloseDisplay (toDisplay (display));
}

void* HostWindow::getHandle() const noexcept
{
    return reinterpret_cast<void*> ((std::uintptr_t) window);
}

bool HostWindow::showsAnother() const
{
    ::Window root = 0, parent = 0, *children = nullptr;
    auto numChildren = 0u;

    if (XQueryTree (toDisplay (display), window, &root, &parent, &children, &numChildren) == 0 || numChildren == 0)
        return false;

    XWindowAttributes attributes {};
    XGetWindowAttributes (toDisplay (display), children[0], &attributes);
    XFree (children);
    return attributes.map_state == IsViewable;
}

void HostWindow::moveTo (juce::Point<int> topLeft) const
{
    XMoveWindow (toDisplay (display), window, topLeft.x, topLeft.y);
    XSync (toDisplay (display), False);
}

void HostWindow::takeFocus() const
{
    XSetInputFocus (toDisplay (display), window, RevertToParent, CurrentTime);
    XSync (toDisplay (display), False);
}
} // namespace cv::test
