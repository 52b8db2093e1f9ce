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

/** A buffer of zeros. */
juce::AudioBuffer<float> makeSilence (int numChannels, int numSamples);

/** White noise of the same seed each time, within ±level. */
juce::AudioBuffer<float> makeNoise (int numChannels, int numSamples, float level);

/** A sine of peak 1 that starts at 0, the same in each channel. */
juce::AudioBuffer<float> makeSine (int numChannels, int numSamples, double cyclesPerSample);

/** True when both have the same channels and, bit for bit, the same samples. */
bool areIdentical (const juce::AudioBuffer<float>&, const juce::AudioBuffer<float>&);
} // namespace cv::test
