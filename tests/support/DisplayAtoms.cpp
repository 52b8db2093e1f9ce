#include "support/DisplayAtoms.h"

#include <initializer_list>

#ifdef __linux__
    #include <X11/Xlib.h>
#endif

namespace cv::test
{
#ifdef __linux__
DisplayAtoms::DisplayAtoms() : display (XOpenDisplay (nullptr))
{
    if (display == nullptr)
        return;

    for (const auto* name : { "WM_PROTOCOLS", "WM_TAKE_FOCUS", "WM_DELETE_WINDOW", "_NET_WM_PING", "WM_CHANGE_STATE",
                              "WM_STATE", "_NET_WM_WINDOW_TYPE", "_NET_WM_STATE", "_NET_WM_STATE_HIDDEN" })
        XInternAtom (static_cast<Display*> (display), name, False);

    XSync (static_cast<Display*> (display), False);
}

DisplayAtoms::~DisplayAtoms()
{
    if (display != nullptr)
        XCloseDisplay (static_cast<Display*> (display));
}
#else
DisplayAtoms::DisplayAtoms() = default;
DisplayAtoms::~DisplayAtoms() = default;
#endif
} // namespace cv::test
