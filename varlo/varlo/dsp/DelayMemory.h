#pragma once

#include "varlo/dsp/Frame.h"

#include <vector>

namespace cv::varlo
{
/** The last seconds of what went into the delay: a ring of frames that is read in runs and emptied in no time.

    Frames are written one run after the other, and a delay of n reads what was written n frames before; 0 is the
    frame that is just being written. The ring isn't cleared: it counts what has been written since it was
    emptied, and reads silence beyond that.

    Threads: prepare() never at the same time as the others, which are the audio thread's and allocate nothing.
*/
class DelayMemory
{
public:
    /** Frames in a row, which stay valid until the next write. */
    struct Run
    {
        const Frame* frames;
        int length;
    };

    /** Empties the memory and makes room for delays of up to `maxDelay` frames. Allocates when that has changed. */
    void prepare (int maxDelay);

    int getMaxDelay() const noexcept { return (int) frames.size() - spareFrames; }

    /** Everything that has been written is silence from now on. */
    void clear() noexcept;

    /** Where the next frames go, as many as there is room for in a row. */
    Frame* getWritePosition() noexcept { return frames.data() + position; }

    int getRoomInARow() const noexcept { return (int) frames.size() - position; }

    /** Takes over `numFrames` frames, at most the room in a row, that stand at the write position. */
    void finishWrite (int numFrames) noexcept;

    /** What will be heard of the next frames at a fixed delay: at least 1 and at most `maxLength` of them,
        maxPartLength of silence. The first frame at the write position has to stand there already; a run is never
        longer than delay + 1, so none beyond that is read.
    */
    Run read (int delay, int maxLength) const noexcept;

    /** What will be heard at the frame `offset` behind the write position. `offset` is at most the delay. */
    Frame readFrame (int delay, int offset) const noexcept
    {
        if (delay > numWritten + offset)
            return {};

        const auto index = position + offset - delay;
        return frames[(size_t) (index < 0 ? index + (int) frames.size() : index)];
    }

private:
    /** One for the frame that is being written; a second one makes room for rounding in the delay. */
    static constexpr int spareFrames = 2;

    std::vector<Frame> frames = std::vector<Frame> (4);
    int position = 0;
    int numWritten = 0; // since it was emptied; at most as many as there are frames
};
} // namespace cv::varlo
