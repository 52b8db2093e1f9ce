#include "varlo/AudioPluginAudioProcessor.h"

/** The plug-in's entry: JUCE's wrapper calls it once per instance and owns what it returns. */
juce::AudioProcessor* JUCE_CALLTYPE createPluginFilter()
{
    auto processor = std::make_unique<cv::varlo::AudioPluginAudioProcessor>();
    processor->initialise();
    return processor.release();
}
