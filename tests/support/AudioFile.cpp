#include "support/AudioFile.h"

#include <gtest/gtest.h>

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
} // namespace cv::test
