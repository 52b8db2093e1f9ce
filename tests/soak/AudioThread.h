#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <atomic>
#include <thread>

namespace cv::soak
{
/** Plays bursts of noise through a plug-in, in blocks of 64 samples at 48 kHz, on a thread of its own, at the pace
    of a sound card, and looks at what comes out.
*/
class AudioThread
{
public:
    /** Prepares the plug-in and starts. A speed of 2 plays twice as fast as it sounds. The plug-in outlives this
        object.
    */
    AudioThread (juce::AudioPluginInstance&, double speed, juce::int64 seed);

    /** Stops, and releases the plug-in's resources. */
    ~AudioThread();

    juce::int64 getNumBlocks() const noexcept { return numBlocks; }

    /** How many samples that came out were no numbers or above the plug-in's limit of 4. */
    juce::int64 getNumBadSamples() const noexcept { return numBadSamples; }

    /** The largest magnitude that came out so far, bad samples aside. */
    float getPeak() const noexcept { return peak; }

private:
    void run (double speed, juce::int64 seed);
    void look (const juce::AudioBuffer<float>&);

    juce::AudioPluginInstance& plugin;
    std::atomic<juce::int64> numBlocks = 0;
    std::atomic<juce::int64> numBadSamples = 0;
    std::atomic<float> peak = 0.0f;
    std::atomic<bool> shouldStop = false;
    std::thread thread;

    JUCE_DECLARE_NON_COPYABLE (AudioThread)
};
} // namespace cv::soak
