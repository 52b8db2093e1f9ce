#include "dsp/OutputGuard.h"

namespace cv::varlo
{
void guardOutput (juce::AudioBuffer<float>& buffer) noexcept
{
    for (int channel = 0; channel < buffer.getNumChannels(); ++channel)
    {
        auto* samples = buffer.getWritePointer (channel);

        for (int i = 0; i < buffer.getNumSamples(); ++i)
            samples[i] = std::isfinite (samples[i]) ? juce::jlimit (-maxOutputLevel, maxOutputLevel, samples[i]) : 0.0f;
    }
}
} // namespace cv::varlo
