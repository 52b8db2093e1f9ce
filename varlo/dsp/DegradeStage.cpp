#include "dsp/DegradeStage.h"

namespace cv::varlo
{
void DegradeStage::update (float newAmount, float newSampleRate) noexcept
{
    if (juce::approximatelyEqual (newAmount, amount) && juce::approximatelyEqual (newSampleRate, sampleRate))
        return;

    amount = newAmount;
    sampleRate = newSampleRate;

    constexpr auto slowestRefreshHz = 100.0f;
    const auto exponent = std::pow (amount, 0.7f) * 5.0f + 1.0f;
    const auto hold = (sampleRate / slowestRefreshHz - 1.0f) * std::pow (amount, exponent) + 1.0f;

    holdLength = juce::jmax (1, juce::roundToInt (hold));
    holdCounter.fill (holdLength);
}

void DegradeStage::process (juce::AudioBuffer<float>& buffer) noexcept
{
    if (buffer.getNumChannels() > maxChannels)
    {
        buffer.clear();
        return;
    }

    for (int channel = 0; channel < buffer.getNumChannels(); ++channel)
    {
        auto& counter = holdCounter[(size_t) channel];
        auto& held = heldSample[(size_t) channel];
        auto* samples = buffer.getWritePointer (channel);

        for (int i = 0; i < buffer.getNumSamples(); ++i)
        {
            if (counter >= holdLength)
            {
                held = samples[i];
                counter = 0;
            }

            samples[i] = held * amount + samples[i] * (1.0f - amount);
            ++counter;
        }
    }
}
} // namespace cv::varlo
