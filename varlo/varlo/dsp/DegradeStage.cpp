#include "varlo/dsp/DegradeStage.h"

#include <juce_core/juce_core.h>

namespace cv::varlo
{
void DegradeStage::setAmount (float newAmount) noexcept
{
    if (juce::approximatelyEqual (newAmount, amount) && juce::approximatelyEqual (preparedSampleRate, sampleRate))
        return;

    amount = newAmount;
    sampleRate = preparedSampleRate;

    constexpr auto slowestRefreshHz = 100.0f;
    const auto exponent = std::pow (amount, 0.7f) * 5.0f + 1.0f;
    const auto hold = (sampleRate / slowestRefreshHz - 1.0f) * std::pow (amount, exponent) + 1.0f;

    holdLength = juce::jmax (1, juce::roundToInt (hold));
    holdCounter.fill (holdLength);
}

void DegradeStage::process (const Frame* source, Frame* destination, int numFrames, int numChannels) noexcept
{
    const Frame held (amount);
    const Frame clean (1.0f - amount);

    for (int i = 0; i < numFrames;)
    {
        const auto captures = [&] (int channel)
        { return channel < numChannels && holdCounter[(size_t) channel] >= holdLength; };

        if (captures (0))
        {
            heldSample = Frame (source[i].left(), heldSample.right());
            holdCounter[0] = 0;
        }

        if (captures (1))
        {
            heldSample = Frame (heldSample.left(), source[i].right());
            holdCounter[1] = 0;
        }

        // To the next capture, whichever channel it comes in.
        const auto oldest = numChannels > 1 ? juce::jmax (holdCounter[0], holdCounter[1]) : holdCounter[0];
        const auto end = juce::jmin (numFrames, i + holdLength - oldest);
        const auto share = heldSample * held;

        for (int channel = 0; channel < numChannels; ++channel)
            holdCounter[(size_t) channel] += end - i;

        for (; i < end; ++i)
            destination[i] = share + source[i] * clean;
    }
}
} // namespace cv::varlo
