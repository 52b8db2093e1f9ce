#include "storm/Instance.h"

#include <cmath>

namespace cv::storm
{
namespace
{
constexpr auto numChannels = 2;

/** The plug-in lets nothing louder through. */
constexpr auto maxLevel = 4.0f;
} // namespace

void Instance::replace (std::unique_ptr<juce::AudioPluginInstance> next)
{
    const std::scoped_lock scopedLock (lock);

    if (plugin != nullptr && blockLimit > 0)
        plugin->releaseResources();

    blockLimit = 0;
    plugin = std::move (next);
}

void Instance::prepare (double sampleRate, int maxBlockLength)
{
    const std::scoped_lock scopedLock (lock);
    plugin->prepareToPlay (sampleRate, maxBlockLength);
    buffer.setSize (numChannels, maxBlockLength);
    blockLimit = maxBlockLength;
}

void Instance::release()
{
    const std::scoped_lock scopedLock (lock);
    plugin->releaseResources();
    blockLimit = 0;
}

Instance::Heard Instance::play (juce::Random& random)
{
    const std::unique_lock scopedLock (lock, std::try_to_lock);

    if (! scopedLock.owns_lock() || plugin == nullptr || blockLimit == 0)
        return {};

    const auto isLoud = random.nextInt (4) == 0;
    const auto length = random.nextInt (blockLimit) + 1;
    juce::AudioBuffer<float> block (buffer.getArrayOfWritePointers(), numChannels, length);
    Heard heard;
    heard.hasPlayed = true;

    for (auto channel = 0; channel < numChannels; ++channel)
        for (auto i = 0; i < length; ++i)
            block.setSample (channel, i, isLoud ? 2.0f * random.nextFloat() - 1.0f : 0.0f);

    plugin->processBlock (block, midi);

    for (auto channel = 0; channel < numChannels; ++channel)
    {
        for (auto i = 0; i < length; ++i)
        {
            const auto magnitude = std::abs (block.getSample (channel, i));

            if (! std::isfinite (magnitude) || magnitude > maxLevel)
                ++heard.numBadSamples;
            else
                heard.peak = juce::jmax (heard.peak, magnitude);
        }
    }

    return heard;
}
} // namespace cv::storm
