#include "dsp/DelayChannel.h"

namespace cv::varlo
{
void DelayChannel::setFeedbackProcessor (FeedbackProcessor processor)
{
    feedbackProcessor = std::move (processor);
}

void DelayChannel::prepare (int samplesPerBlock, float newSampleRate)
{
    // Only channel 0 is used. The rate in this spec has no effect on the line: its length is set
    // below.
    delayLine.prepare ({ (double) sampleRate, (juce::uint32) samplesPerBlock, 2 });

    sampleRate = newSampleRate;
    delayLine.setMaximumDelayInSamples ((int) std::ceil ((float) maxDelaySeconds * sampleRate));

    delaySmoother.setTargetValue (delaySeconds * sampleRate);
    delaySmoother.reset (sampleRate, delayRampSeconds);
    feedbackSmoother.reset (sampleRate, loopGainRampSeconds);
}

void DelayChannel::setDelaySeconds (float seconds) noexcept
{
    if (juce::approximatelyEqual (seconds, delaySeconds))
        return;

    delaySeconds = seconds;
    delaySmoother.setTargetValue (seconds * sampleRate);
}

void DelayChannel::process (float* samples, int numSamples)
{
    const auto maxDelaySamples = (float) delayLine.getMaximumDelayInSamples();

    for (int i = 0; i < numSamples; ++i)
    {
        const auto delaySamples = juce::jlimit (0.0f, maxDelaySamples, delaySmoother.getNextValue());
        const auto loopGain = feedbackSmoother.getNextValue();

        delayLine.pushSample (0, samples[i] + loopGain * feedbackSample);
        const auto delayed = delayLine.popSample (0, delaySamples);

        feedbackSample = feedbackProcessor ? feedbackProcessor (delayed) : delayed;
        samples[i] = delayed;
    }
}
} // namespace cv::varlo
