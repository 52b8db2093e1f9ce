#pragma once

#include "dsp/DegradeStage.h"
#include "dsp/DelayChannel.h"
#include "dsp/FeedbackConditioner.h"
#include "dsp/ParameterValues.h"
#include "dsp/WetLowpass.h"

#include <juce_audio_basics/juce_audio_basics.h>
#include <juce_dsp/juce_dsp.h>

namespace cv::varlo
{
/** The whole sound of the product, for one or two channels that never meet:

        dry      = input * dry gain
        delayed  = delay line, fed with input + loop gain * conditioned (delayed)
        wet      = low-pass (Degrade (delayed)) * wet gain
        output   = guard (wet + dry)

    where conditioned() is the FeedbackConditioner. The stages run one after the other
    over the whole block; only the feedback loop runs sample by sample.

    Threads: prepare() never at the same time as the others, which are the audio thread's. Of these
    process() allocates when a block is longer than any before it, to hold the dry signal.
*/
class DelayEngine
{
public:
    static constexpr int maxChannels = 2;

    DelayEngine();

    /** Prepares all stages for a rate in hertz, above 0, and empties the delay lines. Allocates. */
    void prepare (double sampleRate, int samplesPerBlock, const ParameterValues&);

    /** Sets the targets of all ramps. Degrade alone has none: it changes at once. */
    void setParameters (const ParameterValues&) noexcept;

    /** Empties delay lines, filters and the limiter's envelope. Ramps, the held samples of Degrade
        and the samples that wait to be fed back stay.
    */
    void clearMemories();

    /** Works in place on one or two channels. prepare() has to have been called. */
    void process (juce::AudioBuffer<float>&);

    /** The mean over the channels of the block that process() has just worked on; the only channel of a
        mono block as it stands there. Null without channels. Valid until the next process().
    */
    const float* mixToMono (const juce::AudioBuffer<float>& processed) noexcept;

private:
    juce::SmoothedValue<float> dryGain;
    juce::SmoothedValue<float> wetGain;
    juce::AudioBuffer<float> dryBuffer; // once a block is done, scratch of its size
    DegradeStage degradeStage;
    std::array<DelayChannel, maxChannels> delayChannels;
    FeedbackConditioner feedbackConditioner;
    std::array<WetLowpass, maxChannels> wetLowpasses;
    double sampleRate = 0.0;

    // The delay channels hold on to the conditioner of this very object.
    JUCE_DECLARE_NON_COPYABLE (DelayEngine)
};
} // namespace cv::varlo
