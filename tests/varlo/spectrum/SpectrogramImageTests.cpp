#include "varlo/spectrum/SpectrogramImage.h"

#include "varlo/spectrum/SpectrumAnalyser.h"

#include <gtest/gtest.h>

#include <limits>

namespace cv::varlo
{
namespace
{
constexpr auto numBins = SpectrumAnalyser::numBins;
using Frame = std::vector<float>;

juce::Colour paletteColour (int index)
{
    return juce::Colour (spectrogramPalette[(size_t) index]);
}

float fromDb (float db)
{
    return std::pow (10.0f, db / 20.0f);
}

TEST (SpectrogramImageTest, HasAColumnForEachHopOfFiveSecondsAndARowForEachBinUpTo22050Hz)
{
    struct Row
    {
        double sampleRate;
        int columns, rows;
    };

    for (const auto& row :
         { Row { 44100.0, 431, 513 }, Row { 48000.0, 469, 471 }, Row { 96000.0, 938, 236 }, Row { 22050.0, 215, 513 },
           Row { 88200.0, 861, 257 }, Row { 192000.0, 1875, 119 }, Row { 8000.0, 78, 513 } })
    {
        const auto image = createSpectrogramImage (row.sampleRate);
        EXPECT_EQ (image.getWidth(), row.columns) << row.sampleRate;
        EXPECT_EQ (image.getHeight(), row.rows) << row.sampleRate;
        EXPECT_EQ (image.getFormat(), juce::Image::ARGB);
    }
}

TEST (SpectrogramImageTest, StartsBlank)
{
    const auto image = createSpectrogramImage (44100.0);

    for (const auto x : { 0, 200, 430 })
        for (const auto y : { 0, 256, 512 })
            EXPECT_EQ (image.getPixelAt (x, y), juce::Colours::transparentBlack);
}

TEST (SpectrogramColourTest, SilenceAndAllBelowMinus100DbIsTheFirstColour)
{
    constexpr auto nan = std::numeric_limits<float>::quiet_NaN();
    constexpr auto infinity = std::numeric_limits<float>::infinity();

    for (const auto magnitude : { 0.0f, -0.0f, 1.0e-5f, 0.9e-5f, 1.0e-30f, -1.0f, nan, -infinity })
        EXPECT_EQ (getSpectrogramColour (magnitude), juce::Colour (0xff060606)) << magnitude;
}

TEST (SpectrogramColourTest, FullScaleAndAllAboveIsTheLastColour)
{
    for (const auto magnitude : { 1.0f, 1.0001f, 2.0f, 1.0e30f, std::numeric_limits<float>::infinity() })
        EXPECT_EQ (getSpectrogramColour (magnitude), juce::Colour (0xfffde724)) << magnitude;
}

TEST (SpectrogramColourTest, EachTenDbIsAColourOfThePalette)
{
    const auto expectNear = [] (juce::Colour actual, juce::Colour expected, int index)
    {
        EXPECT_NEAR (actual.getRed(), expected.getRed(), 1) << index;
        EXPECT_NEAR (actual.getGreen(), expected.getGreen(), 1) << index;
        EXPECT_NEAR (actual.getBlue(), expected.getBlue(), 1) << index;
    };

    for (auto index = 0; index <= 10; ++index)
        expectNear (getSpectrogramColour (fromDb (-100.0f + 10.0f * (float) index)), paletteColour (index), index);

    for (auto index = 0; index < 10; ++index)
        expectNear (getSpectrogramColour (fromDb (-95.0f + 10.0f * (float) index)),
                    paletteColour (index).interpolatedWith (paletteColour (index + 1), 0.5f), index);
}

TEST (SpectrogramColumnTest, BinsRiseFromTheLastRow)
{
    auto image = createSpectrogramImage (44100.0);
    Frame frame (numBins, 0.0f);
    frame[0] = 1.0f;
    frame[100] = 1.0f;
    frame[512] = 1.0f;
    appendSpectrogramColumn (image, frame);

    const auto loud = paletteColour (10), silent = paletteColour (0);
    EXPECT_EQ (image.getPixelAt (430, 512), loud);
    EXPECT_EQ (image.getPixelAt (430, 511), silent);
    EXPECT_EQ (image.getPixelAt (430, 412), loud);
    EXPECT_EQ (image.getPixelAt (430, 0), loud);
    EXPECT_EQ (image.getPixelAt (429, 512), juce::Colours::transparentBlack);
}

TEST (SpectrogramColumnTest, BinsAbove22050HzAreLeftOut)
{
    auto image = createSpectrogramImage (96000.0);
    Frame frame (numBins, 0.0f);
    frame[235] = 1.0f;
    frame[236] = 1.0f;
    appendSpectrogramColumn (image, frame);

    EXPECT_EQ (image.getPixelAt (937, 0), paletteColour (10));
    EXPECT_EQ (image.getPixelAt (937, 1), paletteColour (0));
}

TEST (SpectrogramColumnTest, ScrollsAColumnForEachFrameAndDropsTheOldest)
{
    auto image = createSpectrogramImage (8000.0);
    const auto columns = image.getWidth();

    for (auto i = 0; i < columns + 3; ++i)
    {
        Frame frame (numBins, 0.0f);
        frame[(size_t) i] = 1.0f;
        appendSpectrogramColumn (image, frame);
    }

    for (auto x = 0; x < columns; ++x)
        for (auto bin = 0; bin < columns + 3; ++bin)
            ASSERT_EQ (image.getPixelAt (x, 512 - bin), paletteColour (bin == x + 3 ? 10 : 0)) << x << ' ' << bin;
}

TEST (SpectrogramColumnTest, AnImageOfOneColumnShowsTheLastFrame)
{
    juce::Image image (juce::Image::ARGB, 1, 3, true);

    for (const auto loudBin : { 0u, 2u, 1u })
    {
        Frame frame (3, 0.0f);
        frame[loudBin] = 1.0f;
        appendSpectrogramColumn (image, frame);

        for (auto bin = 0u; bin < 3; ++bin)
            EXPECT_EQ (image.getPixelAt (0, 2 - (int) bin), paletteColour (bin == loudBin ? 10 : 0));
    }
}
} // namespace
} // namespace cv::varlo
