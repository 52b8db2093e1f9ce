#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

#include <vector>

namespace cv::test
{
/** Test signals and the measures taken of them. Levels are linear, frequencies in hertz. */

std::vector<float> impulse (int numSamples, int position = 0, float level = 1.0f);
std::vector<float> constant (int numSamples, float level);
std::vector<float> sine (int numSamples, double frequencyHz, double sampleRate, float level = 1.0f);

/** White noise between plus and minus `level`, the same for the same seed. */
std::vector<float> noise (int numSamples, juce::int64 seed, float level = 1.0f);

/** A buffer of one or two channels; both have to be of the same length. */
juce::AudioBuffer<float> toBuffer (const std::vector<std::vector<float>>& channels);

juce::AudioBuffer<float> makeSilence (int numChannels, int numSamples);

/** White noise between plus and minus `level`, different in each channel and the same at each call. */
juce::AudioBuffer<float> makeNoise (int numChannels, int numSamples, float level);

/** A sine of peak 1 that starts at 0, the same in each channel. */
juce::AudioBuffer<float> makeSine (int numChannels, int numSamples, double cyclesPerSample);

std::vector<float> channelOf (const juce::AudioBuffer<float>&, int channel);

/** The largest absolute value of the samples from `begin` on, `end` excluded. */
float peak (const std::vector<float>&, size_t begin, size_t end);

/** Positions of all samples whose absolute value is above `threshold`. */
std::vector<int> positionsAbove (const std::vector<float>&, float threshold);

/** The first sample at which the two differ in any bit, -1 when they are the same. */
int firstDifference (const std::vector<float>&, const std::vector<float>&);

/** True when both have the same channels and, bit for bit, the same samples. */
bool areIdentical (const juce::AudioBuffer<float>&, const juce::AudioBuffer<float>&);

double toDecibels (double gain);
} // namespace cv::test
