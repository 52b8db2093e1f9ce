#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

#include <atomic>
#include <vector>

namespace cv::varlo
{
/** A queue of floats from one writing thread to one reading thread. Neither ever waits: where there is
    no room left the writer drops the oldest samples, so that the newest always win.

    The drop moves the reader's index under its hands. The worst that comes of it is a reader who gets
    newer samples amid the older ones that it asked for.

    Threads: the pushes and dropAll() are the writer's, pop() is the reader's, getNumReady() is anybody's.
    All of them are realtime-safe; only construction allocates.
*/
class SampleFifo
{
public:
    /** Of `capacity` samples, at least 2, one always stays free. */
    explicit SampleFifo (int capacity);

    /** How many samples wait to be read, from 0 to capacity - 1. */
    int getNumReady() const noexcept { return fifo.getNumReady(); }

    /** Appends `count` samples. Where they don't fit, up to `count` of the oldest go first; of more
        samples than fit into the empty queue only the newest are kept. A count of 0 does nothing.
    */
    void pushOverwriting (const float* data, int count) noexcept;

    /** Appends the mean over the channels of a buffer, a single channel as it is. */
    void pushMeanOverwriting (const juce::AudioBuffer<float>&) noexcept;

    /** Takes the `count` oldest samples, or none and returns false when fewer are waiting. */
    bool pop (float* destination, int count) noexcept;

    /** Drops all that waits, so that the next push is what the reader finds first. */
    void dropAll() noexcept;

private:
    juce::AbstractFifo fifo;

    // Writer and reader may meet on the same sample. As atomics without order they then pass on the old or
    // the new value, at the price of a plain access.
    std::vector<std::atomic<float>> samples;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (SampleFifo)
};
} // namespace cv::varlo
