#pragma once

#include "varlo/dsp/ChannelRamps.h"
#include "varlo/dsp/Frame.h"

namespace cv::varlo
{
/** A four-pole low-pass for the feedback loop: what darkens the repeats.

    Four bilinear one-pole low-passes in a row, each with the transfer function
    g (1 + z^-1) / (1 + a z^-1), where for a cutoff c and a rate f

        t = tan (pi c / f),  g = 2t / (2 + 2t),  a = (2t - 2) / (2 + 2t).

    The output y is estimated ahead of the stages from their memories s0 to s3:

        y = s3 + g (s2 + g (s1 + g (s0 + x))).

    In this estimate x is weighted by g^3, where the exact solution has g^4. That is the sound: y is
    the four-pole output and a small direct part of the input, and the last stage remembers this same
    y. A steady input settles a little above itself, at 5 kHz and 44.1 kHz by the factor 1.027, and the
    slope is gentler far above a high cutoff.

    The cutoff of each channel is on a ramp of 10 ms. Threads: prepare() never at the same time as the
    others, which are the audio thread's and allocate nothing.
*/
class FeedbackLadder
{
public:
    static constexpr double rampSeconds = 0.01;

    struct Coefficients
    {
        Frame g, a;
    };

    /** What the four stages remember of the signal. */
    struct Memory
    {
        /** Filters one frame. */
        Frame process (Frame x, const Coefficients& now) noexcept
        {
            const auto [g, a] = now;
            const auto y = s3 + g * (s2 + g * (s1 + g * (s0 + x)));

            const auto u0 = g * x;
            const auto y0 = s0 + u0;
            const auto u1 = g * y0;
            const auto y1 = s1 + u1;
            const auto u2 = g * y1;
            const auto y2 = s2 + u2;
            const auto u3 = g * y2;

            s0 = u0 - a * y0;
            s1 = u1 - a * y1;
            s2 = u2 - a * y2;
            s3 = u3 - a * y;

            return y;
        }

        Frame s0, s1, s2, s3;
    };

    /** Takes the rate in hertz and clears the memory. At a new rate the cutoff arrives at its target; at
        the same rate a ramp goes on. A rate that is not above 0 changes nothing.
    */
    void prepare (double sampleRate) noexcept;

    /** Ramps to a cutoff in hertz within 10 ms; half the rate is the highest that takes effect. */
    void setCutoff (float hz) noexcept { cutoff.setTarget (hz); }

    /** Empties the four stages; cutoff and ramps stay. */
    void clear() noexcept { memory = {}; }

    /** Whether a ramp runs in the first `numChannels` channels. */
    bool isMoving (int numChannels) const noexcept { return cutoff.isMoving (numChannels); }

    /** The coefficients for the next frames, up to maxPartLength, of the first `numChannels` channels. They are worked
        out while a ramp runs; the ramp of a second channel that is left out waits.
    */
    void fillCoefficients (Coefficients* run, int numFrames, int numChannels) noexcept;

    Memory memory;

private:
    struct ChannelCoefficients
    {
        float g, a;
    };

    ChannelCoefficients getCoefficientsAt (float cutoffHz) const noexcept;

    ChannelRamps cutoff { 20.0f }; // hertz
    Coefficients coefficients;
    double sampleRate = 0.0;
    float piOverSampleRate = 0.0f;
};
} // namespace cv::varlo
