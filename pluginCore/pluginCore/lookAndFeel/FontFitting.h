#pragma once

#include <juce_graphics/juce_graphics.h>

namespace cv::pluginCore
{
/** The height at which a text in one line, not squeezed, leaves `extra` of the width free: `height` itself
    where the text fits at that height, else a whole number below it, down to 0. All in logical pixels. Message thread.
*/
float fitFontHeight (const juce::Font&, float width, float height, const juce::String& text, float extra);
} // namespace cv::pluginCore
