#pragma once

#include <juce_graphics/juce_graphics.h>

namespace cv::pluginCore
{
/** A chevron that points right, the outline of a stroke of width 2 with rounded ends, about 9.5 wide and 16.5
    high. To be scaled to where it is drawn. Any thread.
*/
juce::Path createChevronPath();
} // namespace cv::pluginCore
