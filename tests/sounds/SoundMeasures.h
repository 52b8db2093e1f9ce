#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

namespace cv::varlo
{
/** The loudest sample of all channels, in dB of full scale; -100 for silence. */
double getPeakDecibels (const juce::AudioBuffer<float>&);

/** Integrated loudness after EBU R 128, in LUFS; minus infinity for silence. */
double getLoudness (const juce::AudioBuffer<float>&, int sampleRateHz);
} // namespace cv::varlo
