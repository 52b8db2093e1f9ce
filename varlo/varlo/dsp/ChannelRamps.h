#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

#include <utility>

namespace cv::varlo
{
/** The ramp of a setting in both channels. They go together as long as both channels run, and part when a mono layout
    leaves the second one waiting in the middle of its ramp.

    Audio thread, but for reset().
*/
class ChannelRamps
{
public:
    explicit ChannelRamps (float initialValue = 0.0f) noexcept : first (initialValue) {}

    /** Takes the rate in hertz and the ramp's length, and lets both channels arrive. */
    void reset (double sampleRate, double seconds) noexcept
    {
        first.reset (sampleRate, seconds);
        second.reset (sampleRate, seconds);
        haveParted = false;
    }

    void setTarget (float value) noexcept
    {
        first.setTargetValue (value);

        if (haveParted)
            second.setTargetValue (value);
    }

    float getTarget() const noexcept { return first.getTargetValue(); }

    /** Whether a ramp runs in the first `numChannels` channels. */
    bool isMoving (int numChannels) const noexcept { return first.isSmoothing() || (haveParted && numChannels > 1); }

    /** The next values of the first `numChannels` channels; a second one that is left out waits. False when both
        channels go together: then the values of the left one are those of the right one, too, which are not filled.
    */
    bool fill (float* left, float* right, int numFrames, int numChannels) noexcept
    {
        if (numChannels == 1 && first.isSmoothing() && ! std::exchange (haveParted, true))
            second = first;

        for (int i = 0; i < numFrames; ++i)
            left[i] = first.getNextValue();

        if (numChannels == 1 || ! haveParted)
            return false;

        for (int i = 0; i < numFrames; ++i)
            right[i] = second.getNextValue();

        haveParted = first.isSmoothing() || second.isSmoothing();
        return true;
    }

private:
    juce::SmoothedValue<float> first;
    juce::SmoothedValue<float> second; // while they have parted
    bool haveParted = false;
};
} // namespace cv::varlo
