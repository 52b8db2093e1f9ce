#include "varlo/dsp/WetLowpass.h"

#include <algorithm>
#include <array>

namespace cv::varlo
{
void WetLowpass::prepare (double newSampleRate) noexcept
{
    memory = { finiteOrZero (memory.s1), finiteOrZero (memory.s2) };

    if (juce::approximatelyEqual (newSampleRate, sampleRate))
        return;

    sampleRate = newSampleRate;
    clear();
    updateCutoffTarget();
    cutoff.reset (sampleRate, rampSeconds);
    resonance.reset (sampleRate, rampSeconds);
    lastCutoff = 0.0f;
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
        cutoff.setTarget (juce::jmin ((float) sampleRate * 0.5f - marginHz, requestedCutoff));
}

WetLowpass::ChannelCoefficients WetLowpass::getCoefficientsAt (float cutoffHz, float q) const noexcept
{
    const auto g = (float) std::tan (juce::MathConstants<double>::pi * cutoffHz / sampleRate);
    const auto r = (float) (1.0 / q);
    const auto h = (float) (1.0 / (1.0 + r * g + g * g));
    return { g, g + r, h };
}

void WetLowpass::fillCoefficients (Coefficients* run, int numFrames, int numChannels) noexcept
{
    if (! isMoving (numChannels) && juce::exactlyEqual (cutoff.getTarget(), lastCutoff)
        && juce::exactlyEqual (resonance.getTarget(), lastQ))
    {
        std::fill (run, run + numFrames, coefficients);
        return;
    }

    std::array<float, maxPartLength> cutoffs, qs, rightCutoffs, rightQs;
    const auto cutoffsDiffer = cutoff.fill (cutoffs.data(), rightCutoffs.data(), numFrames, numChannels);
    const auto qsDiffer = resonance.fill (qs.data(), rightQs.data(), numFrames, numChannels);

    for (size_t i = 0; i < (size_t) numFrames; ++i)
    {
        const auto [g, gPlusR, h] = getCoefficientsAt (cutoffs[i], qs[i]);
        run[i] = { Frame (g), Frame (gPlusR), Frame (h) };
    }

    for (size_t i = 0; (cutoffsDiffer || qsDiffer) && i < (size_t) numFrames; ++i)
    {
        const auto [g, gPlusR, h] =
            getCoefficientsAt (cutoffsDiffer ? rightCutoffs[i] : cutoffs[i], qsDiffer ? rightQs[i] : qs[i]);
        run[i] = { Frame (run[i].g.left(), g), Frame (run[i].gPlusR.left(), gPlusR), Frame (run[i].h.left(), h) };
    }

    coefficients = run[numFrames - 1];
    lastCutoff = cutoffs[(size_t) numFrames - 1];
    lastQ = qs[(size_t) numFrames - 1];
}
} // namespace cv::varlo
