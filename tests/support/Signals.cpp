#include "support/Signals.h"

#include <bit>
#include <cmath>

namespace cv::test
{
std::vector<float> impulse (int numSamples, int position, float level)
{
    std::vector<float> signal ((size_t) numSamples);
    signal[(size_t) position] = level;
    return signal;
}

std::vector<float> constant (int numSamples, float level)
{
    return std::vector<float> ((size_t) numSamples, level);
}

std::vector<float> sine (int numSamples, double frequencyHz, double sampleRate, float level)
{
    std::vector<float> signal ((size_t) numSamples);

    for (size_t i = 0; i < signal.size(); ++i)
        signal[i] =
            level * (float) std::sin (juce::MathConstants<double>::twoPi * frequencyHz * (double) i / sampleRate);

    return signal;
}

std::vector<float> noise (int numSamples, juce::int64 seed, float level)
{
    juce::Random random (seed);
    std::vector<float> signal ((size_t) numSamples);

    for (auto& sample : signal)
        sample = level * (2.0f * random.nextFloat() - 1.0f);

    return signal;
}

juce::AudioBuffer<float> toBuffer (const std::vector<std::vector<float>>& channels)
{
    juce::AudioBuffer<float> buffer ((int) channels.size(), (int) channels.front().size());

    for (int channel = 0; channel < buffer.getNumChannels(); ++channel)
        buffer.copyFrom (channel, 0, channels[(size_t) channel].data(), buffer.getNumSamples());

    return buffer;
}

juce::AudioBuffer<float> makeSilence (int numChannels, int numSamples)
{
    juce::AudioBuffer<float> buffer (numChannels, numSamples);
    buffer.clear();
    return buffer;
}

juce::AudioBuffer<float> makeNoise (int numChannels, int numSamples, float level)
{
    std::vector<std::vector<float>> channels;

    for (int channel = 0; channel < numChannels; ++channel)
        channels.push_back (noise (numSamples, channel + 1, level));

    return toBuffer (channels);
}

juce::AudioBuffer<float> makeSine (int numChannels, int numSamples, double cyclesPerSample)
{
    return toBuffer (std::vector ((size_t) numChannels, sine (numSamples, cyclesPerSample, 1.0)));
}

std::vector<float> channelOf (const juce::AudioBuffer<float>& buffer, int channel)
{
    const auto* samples = buffer.getReadPointer (channel);
    return { samples, samples + buffer.getNumSamples() };
}

float peak (const std::vector<float>& signal, size_t begin, size_t end)
{
    auto largest = 0.0f;

    for (auto i = begin; i < end; ++i)
        largest = juce::jmax (largest, std::abs (signal[i]));

    return largest;
}

std::vector<int> positionsAbove (const std::vector<float>& signal, float threshold)
{
    std::vector<int> positions;

    for (size_t i = 0; i < signal.size(); ++i)
        if (std::abs (signal[i]) > threshold)
            positions.push_back ((int) i);

    return positions;
}

int firstDifference (const std::vector<float>& a, const std::vector<float>& b)
{
    const auto sameBits = [] (float x, float y)
    { return std::bit_cast<std::uint32_t> (x) == std::bit_cast<std::uint32_t> (y); };

    const auto [inA, inB] = std::mismatch (a.begin(), a.end(), b.begin(), b.end(), sameBits);
    return inA == a.end() && inB == b.end() ? -1 : (int) (inA - a.begin());
}

bool areIdentical (const juce::AudioBuffer<float>& a, const juce::AudioBuffer<float>& b)
{
    if (a.getNumChannels() != b.getNumChannels())
        return false;

    for (int channel = 0; channel < a.getNumChannels(); ++channel)
        if (firstDifference (channelOf (a, channel), channelOf (b, channel)) >= 0)
            return false;

    return true;
}

double toDecibels (double gain)
{
    return 20.0 * std::log10 (gain);
}
} // namespace cv::test
