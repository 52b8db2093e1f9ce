#include "sounds/PresetSound.h"

#include "sounds/SoundMeasures.h"
#include "support/RenderProcess.h"

#include <gtest/gtest.h>
#include <juce_data_structures/juce_data_structures.h>

#include <algorithm>

namespace cv::varlo
{
namespace
{
constexpr auto blockLength = 512;
constexpr auto shortestSeconds = 12.0;
constexpr auto shortestDelays = 3.0;

/** What the plug-in's state is once it has read the preset. */
juce::MemoryBlock readState (const juce::File& preset)
{
    const test::ScratchFolder scratch;
    const auto file = scratch.getFile ("state");
    test::RenderProcess::runWell ({ "--preset", preset.getFullPathName(), "--save-state", file.getFullPathName() });

    juce::MemoryBlock state;
    file.loadFileAsData (state);
    return state;
}

double readDelaySeconds (const juce::File& preset)
{
    const auto xml = juce::parseXML (preset);
    const auto* const parameters = xml != nullptr ? xml->getChildByName ("PARAMS") : nullptr;
    const auto* const delay = parameters != nullptr ? parameters->getChildByAttribute ("id", "delay") : nullptr;

    if (delay == nullptr)
        ADD_FAILURE() << "no delay: " << preset.getFullPathName();

    return delay != nullptr ? delay->getDoubleAttribute ("value") / 1000.0 : 0.0;
}
} // namespace

std::vector<juce::File> findPresets()
{
    const auto found = juce::File (VARLO_RESOURCES)
                           .getChildFile ("presets")
                           .findChildFiles (juce::File::findFiles, true, "*.cvpreset");
    std::vector<juce::File> presets (found.begin(), found.end());
    std::sort (presets.begin(), presets.end());
    return presets;
}

PresetSound::PresetSound (const juce::File& preset)
    : state (readState (preset))
    , delaySeconds (readDelaySeconds (preset))
{
}

PresetSound::Change PresetSound::play (Recording recording)
{
    const auto seconds = juce::jmax (shortestSeconds, shortestDelays * delaySeconds);
    auto buffer = playRecording (recording, juce::roundToInt (seconds * recordingRateHz), recordingPeakDecibels);
    const auto dryLoudness = getLoudness (buffer, recordingRateHz);

    start();
    player->play (buffer, blockLength);
    peak = buffer.getMagnitude (0, buffer.getNumSamples());
    return { getPeakDecibels (buffer), getLoudness (buffer, recordingRateHz) - dryLoudness };
}

double PresetSound::measureTail()
{
    // As quiet as this for longer than any two repeats lie apart, and nothing louder will come.
    const auto quietSamples = (juce::int64) ((delaySeconds + 1.0) * recordingRateHz);
    juce::AudioBuffer<float> buffer (2, blockLength);
    auto tailSamples = (juce::int64) 0;

    for (auto position = (juce::int64) 0; position - tailSamples <= quietSamples; position += blockLength)
    {
        buffer.clear();
        player->play (buffer, blockLength);
        peak = juce::jmax (peak, buffer.getMagnitude (0, blockLength));
        const auto limit = peak * juce::Decibels::decibelsToGain (-60.0f);

        for (auto i = 0; i < blockLength; ++i)
            if (buffer.getMagnitude (i, 1) > limit)
                tailSamples = position + i + 1;
    }

    return (double) tailSamples / recordingRateHz;
}

void PresetSound::start()
{
    player.reset();
    player = std::make_unique<BundlePlayer>();
    EXPECT_EQ (player->setState (state), Steinberg::kResultTrue);
    player->setUp (recordingRateHz, blockLength);
    player->setActive (true);
}
} // namespace cv::varlo
