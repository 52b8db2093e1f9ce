#pragma once

#include <juce_core/juce_core.h>

namespace cv::render
{
/** A line on stderr that tells how far the render is, a few times a second. Only a terminal gets one,
    and it is gone when this object is. One thread.
*/
class ProgressLine
{
public:
    /** Stays silent when stderr is no terminal or the user asked for quiet. */
    explicit ProgressLine (bool quiet);
    ~ProgressLine();

    /** Takes the progress from 0 to 1. */
    void update (double fraction);

private:
    bool isShown;
    juce::uint32 lastUpdateMilliseconds = 0;

    JUCE_DECLARE_NON_COPYABLE (ProgressLine)
};
} // namespace cv::render
