#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

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
    /** Takes the amount, 0 to 1, and the rate in hertz, before each block. When one of them has
        changed, each channel captures a fresh value on its next sample.
    */
    void update (float amount, float sampleRate) noexcept;

    /** Works in place on one or two channels; a buffer with more is cleared. */
    void process (juce::AudioBuffer<float>&) noexcept;

    /** Samples per held value, at least 1 after the first update(). */
    int getHoldLength() const noexcept { return holdLength; }

private:
    static constexpr int maxChannels = 2;

    float sampleRate = 0.0f;
    float amount = 0.0f;
    int holdLength = 0;
    std::array<int, maxChannels> holdCounter {};
    std::array<float, maxChannels> heldSample {};
};
} // namespace cv::varlo
