#include "AudioPluginAudioProcessor.h"

/** The plug-in's entry: JUCE's wrapper calls it once per instance and owns what it returns. */
juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter()
{
    return new cv::varlo::AudioPluginAudioProcessor();
}
