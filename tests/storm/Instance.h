#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <atomic>
#include <memory>
#include <mutex>

namespace cv::storm
{
/** A place for one instance of the plug-in, which comes and goes, between the message thread and one audio thread.
    As hosts do, it never lets a block run while the instance is made, prepared, released or deleted; everything
    else happens while it plays.
*/
class Instance
{
public:
    Instance() = default;

    /** Null while there is none. Message thread. */
    juce::AudioPluginInstance* get() const noexcept { return plugin.get(); }

    /** Puts an instance here, or takes away the one that is here. Message thread. */
    void replace (std::unique_ptr<juce::AudioPluginInstance>);

    /** From now on blocks are played, of up to so many samples. Message thread; there is an instance. */
    void prepare (double sampleRate, int maxBlockLength);

    /** No blocks until the next prepare(). Message thread; there is an instance. */
    void release();

    /** What came out of a block. */
    struct Heard
    {
        bool hasPlayed = false;
        int numBadSamples = 0;
        float peak = 0.0f;
    };

    /** Plays a block of noise or silence if an instance is there, prepared and not being changed just now. Audio
        thread.
    */
    Heard play (juce::Random&);

private:
    std::mutex lock;
    std::unique_ptr<juce::AudioPluginInstance> plugin;
    int blockLimit = 0;
    juce::AudioBuffer<float> buffer;
    juce::MidiBuffer midi;

    JUCE_DECLARE_NON_COPYABLE (Instance)
};
} // namespace cv::storm
