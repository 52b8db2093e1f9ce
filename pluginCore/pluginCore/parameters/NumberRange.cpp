#include "pluginCore/parameters/NumberRange.h"

namespace cv::pluginCore
{
namespace
{
float snapToNumber (float start, float end, float value)
{
    const auto number = std::isnan (value) ? 0.0f : value;
    return number <= start ? start : juce::jmin (number, end);
}
} // namespace

juce::NormalisableRange<float> makeNumberRange (float start, float end, float skew)
{
    using Remap = juce::NormalisableRange<float>::ValueRemapFunction;

    // Without functions of its own for the conversions the range goes by its skew.
    juce::NormalisableRange<float> range (start, end, Remap(), Remap(), Remap (snapToNumber));
    range.skew = skew;
    return range;
}
} // namespace cv::pluginCore
