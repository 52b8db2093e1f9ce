#pragma once

#include <juce_core/juce_core.h>

namespace cv::pluginCore
{
/** A continuous range for a parameter that only ever holds a number: JUCE's own, with the one difference that
    NaN becomes 0, or the end of the range that is nearest to 0. JUCE's range lets it through, from a text, a
    host or a tree into the parameter. Infinities take the ends, as in any range.
*/
juce::NormalisableRange<float> makeNumberRange (float start, float end, float skew = 1.0f);
} // namespace cv::pluginCore
