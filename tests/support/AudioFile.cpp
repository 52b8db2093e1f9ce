#include "support/AudioFile.h"

#include <gtest/gtest.h>

#include <cstring>
#include <random>

namespace cv::test
{
AudioFile AudioFile::read (const juce::File& file)
{
    juce::AudioFormatManager formats;
    formats.registerBasicFormats();
    const std::unique_ptr<juce::AudioFormatReader> reader (formats.createReaderFor (file.createInputStream()));

    if (reader == nullptr)
    {
        ADD_FAILURE() << "no audio file: " << file.getFullPathName();
        return {};
    }

    AudioFile result;
    result.samples.setSize ((int) reader->numChannels, (int) reader->lengthInSamples);
    reader->read (&result.samples, 0, (int) reader->lengthInSamples, 0, true, true);
    result.sampleRate = reader->sampleRate;
    result.bits = (int) reader->bitsPerSample;
    result.isFloat = reader->usesFloatingPointData;
    result.format = reader->getFormatName();
    return result;
}

void AudioFile::writeWav (const juce::File& file, const juce::AudioBuffer<float>& samples, double sampleRate)
{
    juce::WavAudioFormat format;
    write (format, file, samples, sampleRate, 32);
}

void AudioFile::write (juce::AudioFormat& format,
                       const juce::File& file,
                       const juce::AudioBuffer<float>& samples,
                       double sampleRate,
                       int bits)
{
    // A stream to an existing file appends.
    file.deleteFile();
    auto stream = file.createOutputStream();
    const std::unique_ptr<juce::AudioFormatWriter> writer (
        format.createWriterFor (stream.release(), sampleRate, (unsigned int) samples.getNumChannels(), bits, {}, 0));

    if (writer == nullptr || ! writer->writeFromAudioSampleBuffer (samples, 0, samples.getNumSamples()))
        ADD_FAILURE() << "can't write " << file.getFullPathName();
}

juce::AudioBuffer<float> makeSilence (int numChannels, int numSamples)
{
    juce::AudioBuffer<float> buffer (numChannels, numSamples);
    buffer.clear();
    return buffer;
}

juce::AudioBuffer<float> makeNoise (int numChannels, int numSamples, float level)
{
    constexpr unsigned int seed = 20250324;
    std::mt19937 generator (seed);
    std::uniform_real_distribution<float> distribution (-level, level);
    juce::AudioBuffer<float> buffer (numChannels, numSamples);

    for (auto channel = 0; channel < numChannels; ++channel)
        std::generate_n (buffer.getWritePointer (channel), numSamples, [&] { return distribution (generator); });

    return buffer;
}

juce::AudioBuffer<float> makeSine (int numChannels, int numSamples, double cyclesPerSample)
{
    juce::AudioBuffer<float> buffer (numChannels, numSamples);

    for (auto channel = 0; channel < numChannels; ++channel)
        for (auto i = 0; i < numSamples; ++i)
            buffer.setSample (channel, i, (float) std::sin (juce::MathConstants<double>::twoPi * cyclesPerSample * i));

    return buffer;
}

bool areIdentical (const juce::AudioBuffer<float>& a, const juce::AudioBuffer<float>& b)
{
    if (a.getNumChannels() != b.getNumChannels() || a.getNumSamples() != b.getNumSamples())
        return false;

    for (auto channel = 0; channel < a.getNumChannels(); ++channel)
        if (std::memcmp (a.getReadPointer (channel), b.getReadPointer (channel),
                         (size_t) a.getNumSamples() * sizeof (float))
            != 0)
            return false;

    return true;
}
} // namespace cv::test
