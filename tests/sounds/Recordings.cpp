#include "sounds/Recordings.h"

#include "support/AudioFile.h"

#include <gtest/gtest.h>

namespace cv::varlo
{
namespace
{
juce::File getFile (Recording recording)
{
    const auto folder = juce::File (VARLO_TEST_FOLDER).getChildFile ("sounds/recordings");

    switch (recording)
    {
        case Recording::drums:
            return folder.getChildFile ("loop_breakbeat.flac");
        case Recording::guitar:
            return juce::File (VARLO_RESOURCES).getChildFile ("demo/guit_e_fifths.flac");
        case Recording::voice:
            return folder.getChildFile ("ambi_choir.flac");
    }

    return {};
}
} // namespace

const char* getName (Recording recording)
{
    switch (recording)
    {
        case Recording::drums:
            return "drums";
        case Recording::guitar:
            return "guitar";
        case Recording::voice:
            return "voice";
    }

    return "";
}

juce::AudioBuffer<float> playRecording (Recording recording, int numSamples, double peakDecibels)
{
    constexpr auto numChannels = 2;
    juce::AudioBuffer<float> result (numChannels, numSamples);
    result.clear();

    const auto file = test::AudioFile::read (getFile (recording));
    const auto length = file.samples.getNumSamples();
    const auto peak = file.samples.getMagnitude (0, length);

    if (length == 0 || file.samples.getNumChannels() != numChannels || peak <= 0.0f
        || juce::roundToInt (file.sampleRate) != recordingRateHz)
    {
        ADD_FAILURE() << "no recording of " << getName (recording);
        return result;
    }

    const auto gain = juce::Decibels::decibelsToGain ((float) peakDecibels) / peak;

    for (auto channel = 0; channel < numChannels; ++channel)
        for (auto start = 0; start < numSamples; start += length)
            result.copyFrom (channel, start, file.samples.getReadPointer (channel),
                             juce::jmin (length, numSamples - start), gain);

    return result;
}
} // namespace cv::varlo
