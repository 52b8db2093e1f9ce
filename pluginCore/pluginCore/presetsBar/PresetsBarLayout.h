#pragma once

#include <juce_graphics/juce_graphics.h>

namespace cv::pluginCore
{
/** Where the bar's buttons lie, in the bar's own coordinates. */
struct PresetsBarLayout
{
    juce::Rectangle<int> previousButton;
    juce::Rectangle<int> presetsButton;
    juce::Rectangle<int> nextButton;
};

/** The layout of a bar of this size: the arrows as wide as the bar is high, and of them the left one alone a
    sixth lower at the top and the bottom. In a bar that is too narrow the left arrow comes first, then the
    right one. Any thread.
*/
PresetsBarLayout layOutPresetsBar (int width, int height) noexcept;
} // namespace cv::pluginCore
