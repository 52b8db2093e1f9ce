#include "varlo/spectrum/SpectrumPeak.h"

#include "varlo/spectrum/SpectrumAnalyser.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

namespace cv::varlo
{
namespace
{
constexpr double sampleRate = 48000.0;

std::vector<float> makeFrame()
{
    return std::vector<float> ((size_t) SpectrumAnalyser::numBins, 0.0f);
}

TEST (SpectrumPeakTest, IsTheLoudestBin)
{
    auto frame = makeFrame();
    frame[10] = 0.1f;
    frame[32] = 0.5f;
    frame[100] = 0.2f;

    const auto peak = findSpectrumPeak (frame, sampleRate);
    ASSERT_TRUE (peak.has_value());
    EXPECT_FLOAT_EQ (peak->frequencyHz, 1500.0f);
    EXPECT_NEAR (peak->levelDb, -6.02f, 0.01f);
}

TEST (SpectrumPeakTest, IsNoneInWhatTheSpectrogramShowsAsSilence)
{
    EXPECT_FALSE (findSpectrumPeak ({}, sampleRate).has_value());

    auto frame = makeFrame();
    EXPECT_FALSE (findSpectrumPeak (frame, sampleRate).has_value());

    frame[7] = 0.99e-5f;
    EXPECT_FALSE (findSpectrumPeak (frame, sampleRate).has_value());

    frame[7] = 1.01e-5f;
    EXPECT_TRUE (findSpectrumPeak (frame, sampleRate).has_value());
}

TEST (SpectrumPeakTest, IsNotAmongWhatIsNoNumber)
{
    auto frame = makeFrame();
    frame[3] = std::numeric_limits<float>::quiet_NaN();
    EXPECT_FALSE (findSpectrumPeak (frame, sampleRate).has_value());

    frame[64] = 1.0f;
    const auto peak = findSpectrumPeak (frame, sampleRate);
    ASSERT_TRUE (peak.has_value());
    EXPECT_FLOAT_EQ (peak->frequencyHz, 3000.0f);
}
} // namespace
} // namespace cv::varlo
