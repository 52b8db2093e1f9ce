#pragma once

#include <juce_audio_formats/juce_audio_formats.h>

namespace cv::test
{
/** A whole audio file in memory. */
struct AudioFile
{
    juce::AudioBuffer<float> samples;
    double sampleRate = 0.0;
    int bits = 0;
    bool isFloat = false;

    /** "WAV file" and the like. */
    juce::String format;

    /** Reads a file of any known format; fails the test and gives no samples when it can't. */
    static AudioFile read (const juce::File&);

    /** Writes a 32-bit floating point WAV file. */
    static void writeWav (const juce::File&, const juce::AudioBuffer<float>&, double sampleRate);

    /** Writes a file of the given format and bits; fails the test when it can't. */
    static void write (
        juce::AudioFormat&, const juce::File&, const juce::AudioBuffer<float>&, double sampleRate, int bits);
};
} // namespace cv::test
