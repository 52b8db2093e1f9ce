#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

namespace cv::varlo
{
/** Attributes that show a value with its unit. With `numDecimals` of 0 halves are rounded away from
    zero; text is read by JUCE's own rule, the number at its start. Any thread.
*/
juce::AudioParameterFloatAttributes getFreqAttributes (int numDecimals);
juce::AudioParameterFloatAttributes getTimeAttributes (int numDecimals);
juce::AudioParameterFloatAttributes getPercentAttributes (int numDecimals);
} // namespace cv::varlo
