#include "soak/AudioThread.h"

#include <chrono>
#include <cmath>

namespace cv::soak
{
namespace
{
constexpr auto sampleRateHz = 48000.0;
constexpr auto blockLength = 64;
constexpr auto numChannels = 2;
} // namespace

AudioThread::AudioThread (juce::AudioPluginInstance& pluginToPlay, double speed, juce::int64 seed)
    : plugin (pluginToPlay)
{
    plugin.setRateAndBufferSizeDetails (sampleRateHz, blockLength);
    plugin.prepareToPlay (sampleRateHz, blockLength);
    thread = std::thread ([this, speed, seed] { run (speed, seed); });
}

AudioThread::~AudioThread()
{
    shouldStop = true;
    thread.join();
    plugin.releaseResources();
}

void AudioThread::run (double speed, juce::int64 seed)
{
    using Clock = std::chrono::steady_clock;

    // A quarter of a second of noise in every second.
    constexpr auto blocksPerSecond = (juce::int64) sampleRateHz / blockLength;
    constexpr auto level = 0.5f;

    const auto blockTime = std::chrono::duration<double> (blockLength / sampleRateHz / speed);
    juce::AudioBuffer<float> buffer (numChannels, blockLength);
    juce::MidiBuffer midi;
    juce::Random random (seed);
    auto next = Clock::now();

    for (juce::int64 block = 0; ! shouldStop; ++block)
    {
        const auto isLoud = block % blocksPerSecond < blocksPerSecond / 4;

        for (auto channel = 0; channel < numChannels; ++channel)
            for (auto i = 0; i < blockLength; ++i)
                buffer.setSample (channel, i, isLoud ? level * (2.0f * random.nextFloat() - 1.0f) : 0.0f);

        plugin.processBlock (buffer, midi);
        look (buffer);
        ++numBlocks;

        // What a busy machine made late isn't caught up with: a sound card would have dropped it.
        next = std::max (next + std::chrono::duration_cast<Clock::duration> (blockTime), Clock::now());
        std::this_thread::sleep_until (next);
    }
}

void AudioThread::look (const juce::AudioBuffer<float>& buffer)
{
    constexpr auto limit = 4.0f;

    for (auto channel = 0; channel < numChannels; ++channel)
    {
        for (auto i = 0; i < blockLength; ++i)
        {
            const auto magnitude = std::abs (buffer.getSample (channel, i));

            if (! std::isfinite (magnitude) || magnitude > limit)
                ++numBadSamples;
            else if (magnitude > peak)
                peak = magnitude;
        }
    }
}
} // namespace cv::soak
