#pragma once

#include <memory>
#include <string>

namespace cv::test
{
/** The windows of all programs on the display, as its X server knows them. Linux only. */
class DisplayWindows
{
public:
    using Window = unsigned long;

    /** Connects to the display that DISPLAY names, or leaves isConnected() false. */
    DisplayWindows();
    ~DisplayWindows();

    bool isConnected() const noexcept { return connection != nullptr; }

    /** A window of this title that can be seen; 0 for none. */
    Window find (const std::string& title) const;

    /** Asks the window's program to close it, as a click on the window manager's button does. Nothing happens
        when the window has gone.
    */
    void requestClose (Window) const;

private:
    struct Connection;

    std::unique_ptr<Connection> connection;
};
} // namespace cv::test
