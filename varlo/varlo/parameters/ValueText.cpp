#include "varlo/parameters/ValueText.h"

namespace cv::varlo
{
namespace
{
juce::String numberText (float value, int numDecimals)
{
    if (numDecimals > 0)
        return juce::String ((double) value, numDecimals, false);

    return juce::String ((int) std::round (value));
}

juce::AudioParameterFloatAttributes makeAttributes (int numDecimals, const juce::String& suffix)
{
    return juce::AudioParameterFloatAttributes().withStringFromValueFunction (
        [numDecimals, suffix] (float value, int) { return numberText (value, numDecimals) + suffix; });
}
} // namespace

juce::AudioParameterFloatAttributes getFreqAttributes (int numDecimals)
{
    return makeAttributes (numDecimals, " Hz");
}

juce::AudioParameterFloatAttributes getTimeAttributes (int numDecimals)
{
    return makeAttributes (numDecimals, " ms");
}

juce::AudioParameterFloatAttributes getPercentAttributes (int numDecimals)
{
    return makeAttributes (numDecimals, " %");
}
} // namespace cv::varlo
