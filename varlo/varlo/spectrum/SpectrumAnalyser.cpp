#include "varlo/spectrum/SpectrumAnalyser.h"

namespace cv::varlo
{
namespace
{
constexpr int fftOrder = 10;
static_assert (1 << fftOrder == SpectrumAnalyser::windowSamples);

/** Half of the points: a sine's level shows in equal parts at its frequency and at the negative one. */
constexpr float fullScale = 1.0f / 512.0f;

using Window = juce::dsp::WindowingFunction<float>;
} // namespace

SpectrumAnalyser::SpectrumAnalyser() : fft (fftOrder), spectrumWindow ((size_t) windowSamples, Window::hann, true) {}

const float* SpectrumAnalyser::analyse (const float* hop) noexcept
{
    std::copy (fftWindowSamples.begin() + hopSamples, fftWindowSamples.end(), fftWindowSamples.begin());
    std::copy (hop, hop + hopSamples, fftWindowSamples.begin() + hopSamples);

    std::copy (fftWindowSamples.begin(), fftWindowSamples.end(), fftData.begin());
    spectrumWindow.multiplyWithWindowingTable (fftData.data(), (size_t) windowSamples);
    fft.performFrequencyOnlyForwardTransform (fftData.data(), true); // without the negative frequencies
    juce::FloatVectorOperations::multiply (fftData.data(), fullScale, numBins);

    return fftData.data();
}
} // namespace cv::varlo
