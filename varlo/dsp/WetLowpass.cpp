#include "dsp/WetLowpass.h"

namespace cv::varlo
{
WetLowpass::WetLowpass()
{
    filter.setType (juce::dsp::StateVariableTPTFilterType::lowpass);
}

void WetLowpass::prepare (const juce::dsp::ProcessSpec& spec)
{
    if (juce::approximatelyEqual (spec.sampleRate, sampleRate))
        return;

    sampleRate = spec.sampleRate;
    filter.prepare (spec);
    updateCutoffTarget();
    cutoffSmoother.reset (sampleRate, rampSeconds);
    resonanceSmoother.reset (sampleRate, rampSeconds);
}

void WetLowpass::setCutoff (float hz) noexcept
{
    if (juce::approximatelyEqual (hz, requestedCutoff))
        return;

    requestedCutoff = hz;
    updateCutoffTarget();
}

void WetLowpass::updateCutoffTarget() noexcept
{
    constexpr auto marginHz = 1.0f;

    if (requestedCutoff > 0.0f && sampleRate > 0.0)
        cutoffSmoother.setTargetValue (juce::jmin ((float) sampleRate * 0.5f - marginHz, requestedCutoff));
}

void WetLowpass::process (float* samples, int numSamples)
{
    const auto cutoffMoves = cutoffSmoother.isSmoothing();
    const auto resonanceMoves = resonanceSmoother.isSmoothing();

    filter.setCutoffFrequency (cutoffSmoother.getCurrentValue());
    filter.setResonance (resonanceSmoother.getCurrentValue());

    for (int i = 0; i < numSamples; ++i)
    {
        // Each setter works out all coefficients, a tangent among them: only what moves is set.
        if (cutoffMoves)
            filter.setCutoffFrequency (cutoffSmoother.getNextValue());

        if (resonanceMoves)
            filter.setResonance (resonanceSmoother.getNextValue());

        samples[i] = filter.processSample (0, samples[i]);
    }
}
} // namespace cv::varlo
