#pragma once

#include <juce_graphics/juce_graphics.h>

#include <memory>

namespace cv::render
{
/** This program's own line to the X server that DISPLAY names, beside those of its window and of the plug-in's.
    To be made before the first window is, and to outlive them all. Message thread, one at a time.
*/
class DisplayConnection
{
public:
    /** Throws RenderError when there is no such server, and always on systems without X11. */
    DisplayConnection();
    ~DisplayConnection();

    /** How many windows deep the largest nest of windows in this one is that can all be seen; 0 for a window
        that can't.
    */
    int countVisibleLevels (void* window) const;

    /** What a window and the windows in it show, in the server's pixels. Throws RenderError when the window
        does not lie on the screen with all of its area.
    */
    juce::Image capture (void* window) const;

private:
    struct Server;

    std::unique_ptr<Server> server;

    JUCE_DECLARE_NON_COPYABLE (DisplayConnection)
};
} // namespace cv::render
