#pragma once

#include <juce_audio_basics/juce_audio_basics.h>
#include <juce_dsp/juce_dsp.h>

namespace cv::varlo
{
/** One channel's delay line with its feedback loop.

    The line is read without interpolation, so the delay moves in whole samples. A new delay time
    glides there in a straight line of half a second, heard as a change of pitch; a new loop gain
    takes one second. What comes out is the raw read; what goes back has passed the feedback
    processor and is multiplied by the loop gain on its way into the line.

    Threads: prepare() never at the same time as the others, which are the audio thread's and
    allocate nothing.
*/
class DelayChannel
{
public:
    using FeedbackProcessor = std::function<float (float)>;

    static constexpr int maxDelaySeconds = 10;
    static constexpr double delayRampSeconds = 0.5;
    static constexpr double loopGainRampSeconds = 1.0;

    /** Sets what is done to each delayed sample before it is fed back; empty feeds it back as it is.
        Before the first block.
    */
    void setFeedbackProcessor (FeedbackProcessor);

    /** Sizes and clears the line for `sampleRate` (hertz, above 0) and lets both ramps arrive. The
        sample that waits to be fed back stays. Allocates.
    */
    void prepare (int samplesPerBlock, float sampleRate);

    /** Glides to a delay of `seconds`, from 0; the line limits it to maxDelaySeconds. */
    void setDelaySeconds (float seconds) noexcept;

    /** Ramps to a loop gain, a factor from 0 to less than 1. */
    void setLoopGain (float gain) noexcept { feedbackSmoother.setTargetValue (gain); }

    /** Empties the line; ramps and the sample that waits to be fed back stay. */
    void clearLine() { delayLine.reset(); }

    /** Replaces the input by the delayed signal. prepare() has to have been called. */
    void process (float* samples, int numSamples);

private:
    FeedbackProcessor feedbackProcessor;
    float delaySeconds = 0.0f;
    float sampleRate = 0.0f;
    juce::dsp::DelayLine<float, juce::dsp::DelayLineInterpolationTypes::None> delayLine;
    juce::SmoothedValue<float> delaySmoother; // samples
    juce::SmoothedValue<float> feedbackSmoother;
    float feedbackSample = 0.0f;
};
} // namespace cv::varlo
