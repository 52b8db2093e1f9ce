#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

namespace cv::varlo
{
/** A four-pole low-pass for the feedback loop: what darkens the repeats.

    Four bilinear one-pole low-passes in a row, each with the transfer function
    g (1 + z^-1) / (1 + a z^-1), where for a cutoff c and a rate f

        t = tan (pi c / f),  g = 2t / (2 + 2t),  a = (2t - 2) / (2 + 2t).

    A resonance would feed the output y back into the first stage, k times. To close that loop without
    a sample of delay, y is estimated ahead of the stages:

        y = (s3 + g (s2 + g (s1 + g (s0 + x)))) / (1 + k g^4).

    In this estimate x is weighted by g^3, where the exact solution has g^4. That is the sound: y is
    the four-pole output and a small direct part of the input, and the last stage remembers this same
    y. A steady input settles a little above itself, at 5 kHz and 44.1 kHz by the factor 1.027, and the
    slope is gentler far above a high cutoff. This plug-in leaves the resonance at 0, so k is 0.

    Threads: prepare() never at the same time as the others, which are the audio thread's and
    allocate nothing.
*/
class FeedbackLadder
{
public:
    static constexpr double rampSeconds = 0.01;

    /** Takes the rate in hertz and clears the memories. At a new rate the cutoff arrives at its
        target; at the same rate a ramp goes on. A rate that is not above 0 changes nothing.
    */
    void prepare (double sampleRate);

    /** Ramps to a cutoff in hertz within 10 ms; half the rate is the highest that takes effect. */
    void setCutoff (float hz) noexcept { cutoffSmoother.setTargetValue (hz); }

    /** Ramps to a resonance from 0 to 1 within 10 ms. */
    void setResonance (float resonance) noexcept { resonanceSmoother.setTargetValue (resonance); }

    /** Empties the four stages; settings and ramps stay. */
    void clear() noexcept { stage = {}; }

    /** Filters one sample. Transcendental functions are called only while a ramp runs. */
    float processSample (float x) noexcept;

private:
    void updateCoefficients (float cutoffHz) noexcept;
    void updateResonance (float resonance) noexcept;

    juce::SmoothedValue<float> cutoffSmoother { 20.0f };
    juce::SmoothedValue<float> resonanceSmoother { 0.0f };
    float k = 0.0f;
    float g = 0.0f;
    float a = 0.0f;
    float g4 = 0.0f;
    float normaliser = 1.0f;
    std::array<float, 4> stage {};
    double sampleRate = 0.0;
    float piOverSampleRate = 0.0f;
};
} // namespace cv::varlo
