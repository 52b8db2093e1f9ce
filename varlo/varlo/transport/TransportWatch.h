#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

namespace cv::varlo
{
/** Notices when the host's transport jumps to another place in the song.

    A jump is a step of the play head by more than twice the largest block, in either direction; a
    step backwards inside a host loop is none. Live's play head also steps when its tempo moves, so
    there a jump counts only while the tempo stands still.

    A stopped transport is not looked at: the step is always taken from one playing block to the next
    one, so starting far into a song is a jump.
*/
class TransportWatch
{
public:
    /** Reads the play head of a processor that outlives this object. */
    explicit TransportWatch (const juce::AudioProcessor& owner) : processor (owner) {}

    /** Takes the host's block length, in samples. Never at the same time as hasJumped(). */
    void prepare (int samplesPerBlock) noexcept { largestBlockSeen = samplesPerBlock; }

    /** Takes in the play head's position for the block of `numSamples` that comes next, and tells
        whether it is a jump that counts in this host. Audio thread, once a block.
    */
    bool hasJumped (int numSamples, const juce::PluginHostType&) noexcept;

private:
    const juce::AudioProcessor& processor;
    juce::int64 previousTimeInSamples = 0;
    juce::int64 lastTimeInSamples = 0;
    double lastBpm = 0.0;
    double previousBpm = 0.0;
    int largestBlockSeen = 0;
};
} // namespace cv::varlo
