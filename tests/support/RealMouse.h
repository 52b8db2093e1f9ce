#pragma once

#include <juce_graphics/juce_graphics.h>

namespace cv::test
{
/** The display's mouse, moved and pressed through the X server, so that programs can't tell it from a hand's.
    Message thread.
*/
class RealMouse
{
public:
    RealMouse();
    ~RealMouse();

    /** False without a display, or when its server takes no events from programs. Nothing else may be called then. */
    bool isUsable() const noexcept { return display != nullptr; }

    /** Moves to a place in a window, in pixels from its top left corner. */
    void moveTo (void* window, juce::Point<int> place);

    /** The left button. */
    void press();
    void release();

private:
    void* display = nullptr;

    JUCE_DECLARE_NON_COPYABLE (RealMouse)
};
} // namespace cv::test
