#pragma once

#include "host/BundlePlayer.h"
#include "sounds/Recordings.h"

#include <juce_core/juce_core.h>

#include <vector>

namespace cv::varlo
{
/** Where all recordings peak that presets are tried on, in dB of full scale. */
constexpr auto recordingPeakDecibels = -2.0;

/** The presets of the tree that the plug-in is delivered with, sorted by their paths. */
std::vector<juce::File> findPresets();

/** The built bundle with a preset loaded, played at `recordingRateHz`. */
class PresetSound
{
public:
    /** How a preset changes a recording. */
    struct Change
    {
        /** The output's loudest sample, in dB of full scale. */
        double peakDecibels = 0.0;

        /** By how many LU the output is louder than the recording. */
        double loudness = 0.0;
    };

    /** Fails the test where the preset can't be read, or not without a warning. */
    explicit PresetSound (const juce::File& preset);

    /** Starts afresh and plays the recording for twelve seconds, and for three delays at least, so that repeats pile up. */
    Change play (Recording);

    /** After play(): goes on with silence, and tells how many seconds pass until the output stays 60 dB below the loudest
        sample since the start.
    */
    double measureTail();

private:
    void start();

    const juce::MemoryBlock state;
    const double delaySeconds;
    std::unique_ptr<BundlePlayer> player;
    float peak = 0.0f;

    JUCE_DECLARE_NON_COPYABLE (PresetSound)
};
} // namespace cv::varlo
