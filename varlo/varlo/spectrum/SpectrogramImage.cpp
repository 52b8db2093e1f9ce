#include "varlo/spectrum/SpectrogramImage.h"

#include "varlo/spectrum/SpectrumAnalyser.h"

#include <cstring>

namespace cv::varlo
{
namespace
{
constexpr double historySeconds = 5.0;
constexpr double highestFrequencyHz = 22050.0;

void moveOneColumnLeft (juce::Image& image)
{
    const juce::Image::BitmapData pixels (image, juce::Image::BitmapData::readWrite);
    const auto numBytes = (size_t) ((pixels.width - 1) * pixels.pixelStride);

    for (int row = 0; row < pixels.height; ++row)
        std::memmove (pixels.getPixelPointer (0, row), pixels.getPixelPointer (1, row), numBytes);
}
} // namespace

juce::Image createSpectrogramImage (double sampleRate)
{
    constexpr auto highestBinTimesRate = highestFrequencyHz * SpectrumAnalyser::windowSamples;
    const auto highestBin = (int) std::round (highestBinTimesRate / sampleRate);

    const auto rows = juce::jmin (highestBin, SpectrumAnalyser::numBins - 1) + 1;
    const auto columns = juce::roundToInt (historySeconds * sampleRate / SpectrumAnalyser::hopSamples);

    return { juce::Image::ARGB, columns, rows, true };
}

juce::Colour getSpectrogramColour (float magnitude) noexcept
{
    constexpr auto lastIndex = (int) spectrogramPalette.size() - 1;

    const auto db = 20.0f * std::log10 (magnitude);
    const auto level = magnitude > 0.0f && db > silenceDb ? (db - silenceDb) / -silenceDb : 0.0f;
    const auto position = juce::jlimit (0.0f, 1.0f, level) * (float) lastIndex;
    const auto index = (int) std::floor (position);

    const juce::Colour lower (spectrogramPalette[(size_t) index]);
    const juce::Colour upper (spectrogramPalette[(size_t) juce::jmin (index + 1, lastIndex)]);
    return lower.interpolatedWith (upper, position - (float) index);
}

void appendSpectrogramColumn (juce::Image& image, std::span<const float> magnitudes)
{
    if (image.getWidth() >= 2 && image.getHeight() >= 1)
        moveOneColumnLeft (image);

    const juce::Image::BitmapData pixels (image, juce::Image::BitmapData::writeOnly);
    const auto numRows = juce::jmin ((int) magnitudes.size(), image.getHeight());

    for (int bin = 0; bin < numRows; ++bin)
        pixels.setPixelColour (image.getWidth() - 1, image.getHeight() - 1 - bin,
                               getSpectrogramColour (magnitudes[(size_t) bin]));
}
} // namespace cv::varlo
