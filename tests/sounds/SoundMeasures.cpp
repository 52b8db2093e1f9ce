#include "sounds/SoundMeasures.h"

#include <ebur128.h>
#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <vector>

namespace cv::varlo
{
double getPeakDecibels (const juce::AudioBuffer<float>& buffer)
{
    return juce::Decibels::gainToDecibels ((double) buffer.getMagnitude (0, buffer.getNumSamples()));
}

double getLoudness (const juce::AudioBuffer<float>& buffer, int sampleRateHz)
{
    const auto numChannels = buffer.getNumChannels();
    const auto destroy = [] (ebur128_state* state) { ebur128_destroy (&state); };
    const std::unique_ptr<ebur128_state, decltype (destroy)> meter (
        ebur128_init ((unsigned int) numChannels, (unsigned long) sampleRateHz, EBUR128_MODE_I), destroy);

    std::vector<float> frames;
    frames.reserve ((size_t) (numChannels * buffer.getNumSamples()));

    for (auto i = 0; i < buffer.getNumSamples(); ++i)
        for (auto channel = 0; channel < numChannels; ++channel)
            frames.push_back (buffer.getSample (channel, i));

    auto loudness = -std::numeric_limits<double>::infinity();

    if (meter == nullptr
        || ebur128_add_frames_float (meter.get(), frames.data(), (size_t) buffer.getNumSamples()) != EBUR128_SUCCESS
        || ebur128_loudness_global (meter.get(), &loudness) != EBUR128_SUCCESS)
        ADD_FAILURE() << "the loudness can't be measured";

    return loudness;
}
} // namespace cv::varlo
