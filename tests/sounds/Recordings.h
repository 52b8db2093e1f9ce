#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

#include <array>

namespace cv::varlo
{
constexpr auto recordingRateHz = 44100;

/** What presets are tried on: short recordings that may be repeated. */
enum class Recording
{
    drums,
    guitar,
    voice
};

inline constexpr std::array recordings { Recording::drums, Recording::guitar, Recording::voice };

/** "drums" and the like. */
const char* getName (Recording);

/** The recording in stereo at `recordingRateHz`, its loudest sample at `peakDecibels` of full scale, repeated
    without a gap until it has `numSamples`. Fails the test, and gives silence, where it can't be read.
*/
juce::AudioBuffer<float> playRecording (Recording, int numSamples, double peakDecibels);
} // namespace cv::varlo
