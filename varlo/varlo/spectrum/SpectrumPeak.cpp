#include "varlo/spectrum/SpectrumPeak.h"

#include "varlo/spectrum/SpectrogramImage.h"
#include "varlo/spectrum/SpectrumAnalyser.h"

#include <cmath>

namespace cv::varlo
{
std::optional<SpectrumPeak> findSpectrumPeak (std::span<const float> magnitudes, double sampleRate)
{
    auto loudest = 0.0f;
    size_t bin = 0;

    // What is no number is louder than nothing.
    for (size_t i = 0; i < magnitudes.size(); ++i)
        if (magnitudes[i] > loudest)
            loudest = magnitudes[bin = i];

    const auto levelDb = 20.0f * std::log10 (loudest);

    if (! (levelDb > silenceDb))
        return {};

    return SpectrumPeak { .frequencyHz = (float) ((double) bin * sampleRate / SpectrumAnalyser::windowSamples),
                          .levelDb = levelDb };
}
} // namespace cv::varlo
