#pragma once

#include <optional>
#include <span>

namespace cv::varlo
{
/** The loudest of a frame's bins. */
struct SpectrumPeak
{
    float frequencyHz; // the bin's middle
    float levelDb;     // 0 is full scale
};

/** None where all that the frame holds is too quiet to be seen in the spectrogram, or no number. The sample rate is in
    hertz.
*/
std::optional<SpectrumPeak> findSpectrumPeak (std::span<const float> magnitudes, double sampleRate);
} // namespace cv::varlo
