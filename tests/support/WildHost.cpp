#include "support/WildHost.h"

#include "support/Signals.h"

namespace cv::test
{
namespace
{
juce::PluginHostType makeHost (bool isLive)
{
    juce::PluginHostType host;
    host.type = isLive ? juce::PluginHostType::AbletonLive11 : juce::PluginHostType::UnknownHost;
    return host;
}
} // namespace

WildHost::WildHost (juce::int64 seed, const Options& optionsToUse)
    : random (seed)
    , options (optionsToUse)
    , sampleRate (options.sampleRate)
    , harness (options.numChannels, makeHost (options.isLive))
    , channels ((size_t) options.numChannels)
{
    switch (options.situation)
    {
        case Situation::shortDelay:
            setParameters ({ 50.0f, 0.0f, 350.0f, 50.0f, 5000.0f, 0.0f });
            break;
        case Situation::coloured:
            setParameters ({ 50.0f, 50.0f, 1000.0f, 50.0f, 5000.0f, 50.0f });
            break;
        case Situation::loud:
            setParameters ({ 50.0f, 0.0f, 350.0f, 100.0f, 12000.0f, 0.0f });
            break;
        case Situation::wild:
        case Situation::rest:
        case Situation::lowpass:
        case Situation::gliding:
        case Situation::everything:
        case Situation::degradeMoves:
            break;
    }

    prepare();
}

bool WildHost::playBlock (int blockIndex)
{
    if (random.nextInt (400) == 0)
        prepare();

    moveParameters();
    makeInput (random.nextInt (20) == 0 ? random.nextInt (3000) : random.nextInt (600));
    const auto position = movePlayHead();
    const auto blockLength = (int) channels[0].size();

    const auto processed = harness.render (toBuffer (channels), [blockLength] { return blockLength; });
    {
        const juce::ScopedNoDenormals noDenormals;
        model.process (channels, values(), position);
    }

    numJumps = model.getNumJumps();
    secondsPlayed += blockLength / sampleRate;
    loudest = juce::jmax (loudest, processed.getMagnitude (0, blockLength));
    return areSame (processed, blockIndex);
}

bool WildHost::areSame (const juce::AudioBuffer<float>& processed, int blockIndex) const
{
    for (size_t c = 0; c < channels.size(); ++c)
    {
        const auto sample = firstDifference (channelOf (processed, (int) c), channels[c]);

        if (sample >= 0)
        {
            ADD_FAILURE() << "block " << blockIndex << ", channel " << c << ", sample " << sample << ": "
                          << processed.getSample ((int) c, sample) << " is not " << channels[c][(size_t) sample];
            return false;
        }
    }

    return true;
}

LiteralModel::Values WildHost::values()
{
    return { .mixPercent = harness.parameter ("mix").get(),
             .degradePercent = harness.parameter ("degrade").get(),
             .delayMilliseconds = harness.parameter ("delay").get(),
             .feedbackPercent = harness.parameter ("feedback").get(),
             .lowpassHz = harness.parameter ("lowpass").get(),
             .resonancePercent = harness.parameter ("resonance").get() };
}

void WildHost::setParameters (const LiteralModel::Values& newValues)
{
    harness.set ("mix", newValues.mixPercent);
    harness.set ("degrade", newValues.degradePercent);
    harness.set ("delay", newValues.delayMilliseconds);
    harness.set ("feedback", newValues.feedbackPercent);
    harness.set ("lowpass", newValues.lowpassHz);
    harness.set ("resonance", newValues.resonancePercent);
}

void WildHost::prepare()
{
    if (options.changesRateAndLayout)
    {
        constexpr std::array rates { 8000.0, 22050.0, 44100.0, 44100.0, 48000.0, 96000.0 };
        sampleRate = rates[(size_t) random.nextInt ((int) rates.size())];
        channels.resize ((size_t) random.nextInt ({ 1, 3 }));
        harness.setNumChannels ((int) channels.size());
    }

    const auto blockSize = 32 << random.nextInt (6);
    harness.prepare (sampleRate, blockSize);

    const juce::ScopedNoDenormals noDenormals;
    model.prepare (sampleRate, blockSize, values());
}

void WildHost::moveParameters()
{
    const auto move = [this] (const juce::String& id)
    { harness.parameter (id).setValueNotifyingHost (random.nextFloat()); };

    switch (options.situation)
    {
        case Situation::wild:
        {
            // Long rests, so that ramps come to their ends; now and then one knob or all of them.
            const auto dice = random.nextInt (60);

            for (auto* parameter : harness.processor.getParameters())
                if (dice == 0 || (dice < 8 && random.nextInt (6) == 0))
                    parameter->setValueNotifyingHost (random.nextInt (8) == 0 ? (float) random.nextInt (2)
                                                                              : random.nextFloat());
            break;
        }

        case Situation::lowpass:
            move ("lowpass");
            break;
        case Situation::gliding:
            move ("delay");
            break;
        case Situation::degradeMoves:
            move ("degrade");
            break;

        case Situation::everything:
            for (auto* parameter : harness.processor.getParameters())
                parameter->setValueNotifyingHost (random.nextFloat());
            break;

        case Situation::rest:
        case Situation::shortDelay:
        case Situation::coloured:
        case Situation::loud:
            break;
    }
}

void WildHost::makeInput (int numSamples)
{
    if (options.situation == Situation::loud)
        level = 3.0f;
    else if (random.nextInt (30) == 0)
        level = std::array { 0.0f, 0.1f, 1.0f, 6.0f }[(size_t) random.nextInt (4)];

    for (auto& channel : channels)
    {
        channel.resize ((size_t) numSamples);

        for (auto& sample : channel)
            sample = level * (2.0f * random.nextFloat() - 1.0f);
    }

    // Now and then what another plug-in has got wrong.
    if (random.nextInt (300) == 0 && numSamples > 0)
        channels[0][(size_t) random.nextInt (numSamples)] =
            random.nextBool() ? std::numeric_limits<float>::quiet_NaN() : std::numeric_limits<float>::infinity();
}

std::optional<LiteralModel::Position> WildHost::movePlayHead()
{
    const auto numSamples = (juce::int64) channels[0].size();

    if (random.nextInt (50) == 0)
        time = random.nextInt (1 << 30);

    if (random.nextInt (50) == 0)
        time += random.nextInt (8192) - 4096;

    if (random.nextInt (100) == 0)
        looping = ! looping;

    if (random.nextInt (10) == 0)
        bpm = 60.0 + random.nextInt (3) * 30.0;

    if (random.nextInt (20) == 0)
    {
        harness.playHead.position = juce::nullopt;
        return {};
    }

    const auto hasTempo = random.nextInt (10) != 0;
    auto info = FakePlayHead::playingAt (time);
    info.setIsLooping (looping);
    info.setBpm (hasTempo ? juce::makeOptional (bpm) : juce::nullopt);
    harness.playHead.position = info;

    LiteralModel::Position position { time, {}, looping, options.isLive };

    if (hasTempo)
        position.bpm = bpm;

    time += numSamples;
    return position;
}
} // namespace cv::test
