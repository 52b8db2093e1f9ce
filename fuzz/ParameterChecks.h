#pragma once

#include "FuzzEnvironment.h"
#include "pluginCore/state/StateChunk.h"
#include "varlo/AudioPluginAudioProcessor.h"

#include <cmath>

namespace cv::fuzz
{
/** Each parameter stands within its range, whatever was restored; what is saved then can be read again. */
inline void requireSoundState (varlo::AudioPluginAudioProcessor& processor)
{
    for (const auto* parameter : processor.getParameters())
    {
        const auto value = parameter->getValue();
        require (std::isfinite (value) && value >= 0.0f && value <= 1.0f, "a parameter in its range");
    }

    juce::MemoryBlock chunk;
    processor.getStateInformation (chunk);
    require (pluginCore::parseStateChunk (chunk.getData(), (int) chunk.getSize()) != nullptr, "a saved state is read");
}

/** Leaves nothing of the input before, so that each finding repeats by itself. */
inline void restoreNeutralState (varlo::AudioPluginAudioProcessor& processor)
{
    static const auto chunk = []
    {
        juce::MemoryBlock block;
        juce::AudioProcessor::copyXmlToBinary (*juce::parseXML ("<Varlo><PARAMS/><Settings/><Data/></Varlo>"), block);
        return block;
    }();

    processor.setStateInformation (chunk.getData(), (int) chunk.getSize());
    processor.setStateInformation (chunk.getData(), (int) chunk.getSize());
}
} // namespace cv::fuzz
