#pragma once

#include "varlo/dsp/Frame.h"

namespace cv::varlo
{
/** Holds what is fed back near +1 dB, so that a loud loop never runs away.

    An envelope e follows the rectified signal, in each channel for itself,

        e = |x| + c (e - |x|),

    with the coefficient c of a 5 ms attack where |x| is above e, else that of a 50 ms release. At or above
    the threshold T the gain is (e / T)^(1 / 100 - 1), below it 1. The same samples as those of
    juce::dsp::Compressor with these settings.

    Threads: prepare() never at the same time as the others, which are the audio thread's and
    allocate nothing.
*/
class FeedbackLimiter
{
public:
    struct Coefficients
    {
        Frame attack, release, threshold;
    };

    FeedbackLimiter();

    /** Takes the rate in hertz, above 0, and clears the envelopes. */
    void prepare (double sampleRate) noexcept;

    void clear() noexcept { envelope = {}; }

    const Coefficients& getCoefficients() const noexcept { return coefficients; }

    /** What the limiter remembers of the signal. */
    struct Envelope
    {
        /** Limits one frame. Calls a transcendental function at or above the threshold only. */
        Frame process (Frame x, const Coefficients& now) noexcept
        {
            const auto level = abs (x);
            const auto fall = value - level;

            // Both coefficients lie between 0 and 1 and the attack's is the smaller one: the larger product is
            // the attack's where the level rises and the release's where it falls.
            value = level + max (now.attack * fall, now.release * fall);

            return areBothBelow (value, now.threshold) ? x : x * getGain (value, now.threshold);
        }

        Frame value;
    };

    Envelope envelope;

private:
    static Frame getGain (Frame envelope, Frame threshold) noexcept;

    Coefficients coefficients;
};
} // namespace cv::varlo
