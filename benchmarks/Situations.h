#pragma once

#include "varlo/dsp/ParameterValues.h"

#include <juce_audio_basics/juce_audio_basics.h>

#include <array>

namespace cv::benchmarks
{
/** What the sound is measured in: knobs, how they move, and an input. */
struct Situation
{
    /** For names of benchmarks and for command lines. */
    const char* name;

    varlo::ParameterValues settings;

    /** What of the settings changes before each block. */
    enum class Movement
    {
        none,
        lowpass,
        delay,
        everything
    };
    Movement movement;

    /** The input is noise of this peak, in bursts of a quarter of a second or without a break. */
    float inputLevel;
    bool inBursts;

    varlo::ParameterValues getSettingsForBlock (int blockIndex) const noexcept;

    juce::AudioBuffer<float> makeInput (int numChannels, int numSamples, double sampleRate) const;
};

extern const std::array<Situation, 7> situations;

/** Null when no situation has that name. */
const Situation* findSituation (std::string_view name) noexcept;
} // namespace cv::benchmarks
