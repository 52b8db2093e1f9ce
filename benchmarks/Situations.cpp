#include "Situations.h"

#include <algorithm>

namespace cv::benchmarks
{
namespace
{
using Movement = Situation::Movement;

constexpr varlo::ParameterValues defaults { .mixPercent = 50.0f,
                                            .degradePercent = 0.0f,
                                            .delayMilliseconds = 1000.0f,
                                            .feedbackPercent = 50.0f,
                                            .lowpassHz = 5000.0f,
                                            .resonancePercent = 0.0f };

constexpr auto shortDelay = []
{
    auto values = defaults;
    values.delayMilliseconds = 350.0f;
    return values;
}();

constexpr auto coloured = []
{
    auto values = defaults;
    values.degradePercent = 50.0f;
    values.resonancePercent = 50.0f;
    return values;
}();

constexpr auto loudLoop = []
{
    auto values = defaults;
    values.delayMilliseconds = 350.0f;
    values.feedbackPercent = 100.0f;
    values.lowpassHz = 12000.0f;
    return values;
}();

/** A value that is another one in every block and comes back after 16 of them. */
float sweep (int blockIndex, float from, float to)
{
    return from + (to - from) * (float) (blockIndex * 5 % 16) / 15.0f;
}
} // namespace

const std::array<Situation, 7> situations { {
    { "rest", defaults, Movement::none, 0.5f, true },
    { "short delay", shortDelay, Movement::none, 0.5f, true },
    { "Degrade + Resonance", coloured, Movement::none, 0.5f, true },
    { "Lowpass automated", defaults, Movement::lowpass, 0.5f, true },
    { "Delay gliding", defaults, Movement::delay, 0.5f, true },
    { "loud loop", loudLoop, Movement::none, 3.0f, false },
    { "everything moving", defaults, Movement::everything, 0.8f, true },
} };

const Situation* findSituation (std::string_view name) noexcept
{
    const auto* found = std::find_if (situations.begin(), situations.end(),
                                      [&] (const auto& situation) { return name == situation.name; });
    return found == situations.end() ? nullptr : found;
}

varlo::ParameterValues Situation::getSettingsForBlock (int blockIndex) const noexcept
{
    auto values = settings;

    if (movement == Movement::lowpass || movement == Movement::everything)
        values.lowpassHz = sweep (blockIndex, 500.0f, 12000.0f);

    if (movement == Movement::delay || movement == Movement::everything)
        values.delayMilliseconds = sweep (blockIndex, 200.0f, 500.0f);

    if (movement == Movement::everything)
    {
        values.mixPercent = sweep (blockIndex, 20.0f, 80.0f);
        values.degradePercent = sweep (blockIndex, 10.0f, 60.0f);
        values.feedbackPercent = sweep (blockIndex, 30.0f, 90.0f);
        values.resonancePercent = sweep (blockIndex, 10.0f, 70.0f);
    }

    return values;
}

juce::AudioBuffer<float> Situation::makeInput (int numChannels, int numSamples, double sampleRate) const
{
    juce::AudioBuffer<float> input (numChannels, numSamples);
    juce::Random random (1);
    const auto burstLength = (int) (0.25 * sampleRate);

    for (int i = 0; i < numSamples; ++i)
        for (int channel = 0; channel < numChannels; ++channel)
        {
            const auto noise = inputLevel * (2.0f * random.nextFloat() - 1.0f);
            input.setSample (channel, i, inBursts && i / burstLength % 2 == 1 ? 0.0f : noise);
        }

    return input;
}
} // namespace cv::benchmarks
