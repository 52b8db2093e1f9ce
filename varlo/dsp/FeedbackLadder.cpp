#include "dsp/FeedbackLadder.h"

namespace cv::varlo
{
void FeedbackLadder::prepare (double newSampleRate)
{
    if (! (newSampleRate > 0.0))
        return;

    clear();

    if (juce::approximatelyEqual (newSampleRate, sampleRate))
        return;

    sampleRate = newSampleRate;
    piOverSampleRate = juce::MathConstants<float>::pi / (float) sampleRate;

    cutoffSmoother.reset (sampleRate, rampSeconds);
    resonanceSmoother.reset (sampleRate, rampSeconds);

    updateCoefficients (cutoffSmoother.getTargetValue());
    updateResonance (resonanceSmoother.getTargetValue());
}

void FeedbackLadder::updateCoefficients (float cutoffHz) noexcept
{
    const auto t = std::tan (juce::jmin (0.5f * (float) sampleRate, cutoffHz) * piOverSampleRate);

    g = 2.0f * t / (2.0f + 2.0f * t);
    g4 = std::pow (g, 4.0f);
    normaliser = 1.0f / (g4 * k + 1.0f);
    a = (2.0f * t - 2.0f) / (2.0f + 2.0f * t);
}

void FeedbackLadder::updateResonance (float resonance) noexcept
{
    constexpr auto maxFeedback = 4.0f * 0.95f; // four poles oscillate at 4

    k = resonance * maxFeedback;
    normaliser = 1.0f / (g4 * k + 1.0f);
}

float FeedbackLadder::processSample (float x) noexcept
{
    if (cutoffSmoother.isSmoothing())
        updateCoefficients (cutoffSmoother.getNextValue());

    if (resonanceSmoother.isSmoothing())
        updateResonance (resonanceSmoother.getNextValue());

    auto& [s0, s1, s2, s3] = stage;

    const auto y = normaliser * (s3 + g * (s2 + g * (s1 + g * (s0 + x))));

    const auto u0 = g * (x - k * y);
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
} // namespace cv::varlo
