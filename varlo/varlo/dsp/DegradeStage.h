#pragma once

#include "varlo/dsp/Frame.h"

#include <array>

namespace cv::varlo
{
/** Lowers the sample rate of the wet signal: a sample-and-hold, blended with the signal itself.

    One amount d from 0 to 1 sets both how long a value is held and how much of the held signal is
    heard. The hold grows from 1 sample to a hundredth of a second along

        (rate / 100 - 1) d^(5 d^0.7 + 1) + 1,

    steeply at the end of the range. Nothing is filtered before the capture: the aliasing is the
    effect. At d = 0 the stage is transparent.

    Audio thread; allocates nothing.
*/
class DegradeStage
{
public:
    /** Takes the rate in hertz, for the next setAmount(). */
    void prepare (float newSampleRate) noexcept { preparedSampleRate = newSampleRate; }

    /** Takes the amount, 0 to 1, before each block. When it or the rate has changed, each channel captures a
        fresh value on its next sample.
    */
    void setAmount (float amount) noexcept;

    /** Whether process() would give back what it is given. */
    bool isTransparent() const noexcept { return holdLength == 1 && amount <= 0.0f; }

    /** Works on the first `numChannels` channels, 1 or 2; a second one that is left out waits. The source
        stays as it is.
    */
    void process (const Frame* source, Frame* destination, int numFrames, int numChannels) noexcept;

    /** Samples per held value, at least 1. */
    int getHoldLength() const noexcept { return holdLength; }

private:
    float preparedSampleRate = 0.0f;
    float sampleRate = 0.0f; // what the hold was worked out for
    float amount = 0.0f;
    int holdLength = 1;
    std::array<int, maxChannels> holdCounter {};
    Frame heldSample;
};
} // namespace cv::varlo
