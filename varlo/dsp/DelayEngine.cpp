#include "dsp/DelayEngine.h"

#include "dsp/OutputGuard.h"

namespace cv::varlo
{
namespace
{
constexpr double mixRampSeconds = 0.005;

/** At full Feedback the loop still loses a little, so that repeats always die away in the end. */
constexpr float maxLoopGain = 0.92f;

/** From 0.1, overdamped, to 20.1; the cube leaves most of the knob to the gentle half. */
float resonanceToQ (float resonancePercent) noexcept
{
    return std::pow (resonancePercent * 0.01f, 3.0f) * 20.0f + 0.1f;
}
} // namespace

DelayEngine::DelayEngine()
{
    for (int channel = 0; channel < maxChannels; ++channel)
        delayChannels[(size_t) channel].setFeedbackProcessor (
            [this, channel] (float delayed) { return feedbackConditioner.processSample (channel, delayed); });
}

void DelayEngine::prepare (double newSampleRate, int samplesPerBlock, const ParameterValues& values)
{
    sampleRate = newSampleRate;

    // Before the first prepare no ramp has a length, so these targets take effect at once.
    setParameters (values);

    dryGain.reset (sampleRate, mixRampSeconds);
    wetGain.reset (sampleRate, mixRampSeconds);

    const juce::dsp::ProcessSpec spec { sampleRate, (juce::uint32) samplesPerBlock, maxChannels };

    for (auto& channel : delayChannels)
        channel.prepare (samplesPerBlock, (float) sampleRate);

    feedbackConditioner.prepare (spec);

    for (auto& lowpass : wetLowpasses)
        lowpass.prepare (spec);
}

void DelayEngine::setParameters (const ParameterValues& values) noexcept
{
    const auto mix = values.mixPercent * 0.01f;
    dryGain.setTargetValue (1.0f - mix);
    wetGain.setTargetValue (mix);

    for (auto& channel : delayChannels)
    {
        channel.setDelaySeconds (values.delayMilliseconds * 0.001f);
        channel.setLoopGain (values.feedbackPercent * 0.01f * maxLoopGain);
    }

    degradeStage.update (values.degradePercent * 0.01f, (float) sampleRate);

    feedbackConditioner.setCutoff (values.lowpassHz);

    for (auto& lowpass : wetLowpasses)
    {
        lowpass.setCutoff (values.lowpassHz);
        lowpass.setResonance (resonanceToQ (values.resonancePercent));
    }
}

void DelayEngine::clearMemories()
{
    for (auto& channel : delayChannels)
        channel.clearLine();

    feedbackConditioner.clear();

    for (auto& lowpass : wetLowpasses)
        lowpass.clear();
}

void DelayEngine::process (juce::AudioBuffer<float>& buffer)
{
    const auto numSamples = buffer.getNumSamples();
    const auto numChannels = juce::jmin (buffer.getNumChannels(), maxChannels);

    dryBuffer.makeCopyOf (buffer, true);
    dryGain.applyGain (dryBuffer, numSamples);

    for (int channel = 0; channel < numChannels; ++channel)
        delayChannels[(size_t) channel].process (buffer.getWritePointer (channel), numSamples);

    degradeStage.process (buffer);

    for (int channel = 0; channel < numChannels; ++channel)
        wetLowpasses[(size_t) channel].process (buffer.getWritePointer (channel), numSamples);

    wetGain.applyGain (buffer, numSamples);

    for (int channel = 0; channel < buffer.getNumChannels(); ++channel)
        buffer.addFrom (channel, 0, dryBuffer, channel, 0, numSamples);

    guardOutput (buffer);
}

const float* DelayEngine::mixToMono (const juce::AudioBuffer<float>& processed) noexcept
{
    const auto numChannels = processed.getNumChannels();
    const auto numSamples = processed.getNumSamples();

    if (numChannels < 2)
        return numChannels == 1 ? processed.getReadPointer (0) : nullptr;

    dryBuffer.setNotClear();
    dryBuffer.copyFrom (0, 0, processed, 0, 0, numSamples);

    for (int channel = 1; channel < numChannels; ++channel)
        dryBuffer.addFrom (0, 0, processed, channel, 0, numSamples);

    dryBuffer.applyGain (0, 0, numSamples, 1.0f / (float) numChannels);
    return dryBuffer.getReadPointer (0);
}
} // namespace cv::varlo
