#include "varlo/dsp/FeedbackLadder.h"

#include <algorithm>
#include <array>

namespace cv::varlo
{
void FeedbackLadder::prepare (double newSampleRate) noexcept
{
    if (! (newSampleRate > 0.0))
        return;

    clear();

    if (juce::approximatelyEqual (newSampleRate, sampleRate))
        return;

    sampleRate = newSampleRate;
    piOverSampleRate = juce::MathConstants<float>::pi / (float) sampleRate;

    cutoff.reset (sampleRate, rampSeconds);

    const auto [g, a] = getCoefficientsAt (cutoff.getTarget());
    coefficients = { Frame (g), Frame (a) };
}

FeedbackLadder::ChannelCoefficients FeedbackLadder::getCoefficientsAt (float cutoffHz) const noexcept
{
    const auto t = std::tan (juce::jmin (0.5f * (float) sampleRate, cutoffHz) * piOverSampleRate);
    return { 2.0f * t / (2.0f + 2.0f * t), (2.0f * t - 2.0f) / (2.0f + 2.0f * t) };
}

void FeedbackLadder::fillCoefficients (Coefficients* run, int numFrames, int numChannels) noexcept
{
    if (! isMoving (numChannels))
    {
        std::fill (run, run + numFrames, coefficients);
        return;
    }

    std::array<float, maxPartLength> left, right;
    const auto differ = cutoff.fill (left.data(), right.data(), numFrames, numChannels);

    for (int i = 0; i < numFrames; ++i)
    {
        const auto [g, a] = getCoefficientsAt (left[(size_t) i]);
        run[i] = { Frame (g), Frame (a) };
    }

    for (int i = 0; differ && i < numFrames; ++i)
    {
        const auto [g, a] = getCoefficientsAt (right[(size_t) i]);
        run[i] = { Frame (run[i].g.left(), g), Frame (run[i].a.left(), a) };
    }

    coefficients = run[numFrames - 1];
}
} // namespace cv::varlo
