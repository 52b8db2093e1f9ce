#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::pluginCore
{
/** Gives a button a shape for all its states; a disabled button looks like a pressed one. Message thread. */
void setButtonShape (juce::DrawableButton&,
                     const juce::Path&,
                     juce::Colour normal,
                     juce::Colour down,
                     juce::Colour over,
                     juce::Colour normalOn);
} // namespace cv::pluginCore
