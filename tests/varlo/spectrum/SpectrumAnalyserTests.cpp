#include "varlo/spectrum/SpectrumAnalyser.h"

#include "support/Signals.h"

#include <gmock/gmock.h>

#include <complex>

namespace cv::varlo
{
namespace
{
using cv::test::constant;
using cv::test::noise;
using cv::test::sine;
using testing::Each;

constexpr int windowSamples = 1024;
constexpr int hopSamples = 512;
constexpr int numBins = 513;

using Frame = std::vector<float>;

/** All frames of a signal whose length is a multiple of a hop. */
std::vector<Frame> framesOf (const std::vector<float>& signal)
{
    SpectrumAnalyser analyser;
    std::vector<Frame> frames;

    for (size_t start = 0; start < signal.size(); start += hopSamples)
    {
        const auto* magnitudes = analyser.analyse (signal.data() + start);
        frames.emplace_back (magnitudes, magnitudes + numBins);
    }

    return frames;
}

/** A bin by the sum that defines it: a symmetric Hann window scaled to a mean of 1, then the discrete
    Fourier transform, all in double precision.
*/
double expectedMagnitude (const std::vector<double>& window, int bin)
{
    const auto twoPi = juce::MathConstants<double>::twoPi;
    std::complex<double> sum;
    auto windowSum = 0.0;

    for (int i = 0; i < windowSamples; ++i)
    {
        const auto hann = 0.5 - 0.5 * std::cos (twoPi * i / (windowSamples - 1));
        sum += window[(size_t) i] * hann * std::polar (1.0, -twoPi * bin * i / windowSamples);
        windowSum += hann;
    }

    return std::abs (sum) * windowSamples / windowSum / 512.0;
}

std::vector<float> sineInBin (double bin, float level = 1.0f)
{
    return sine (4 * hopSamples, bin, windowSamples, level);
}

TEST (SpectrumAnalyser, HasFramesOf513BinsEvery512Samples)
{
    EXPECT_EQ (SpectrumAnalyser::windowSamples, windowSamples);
    EXPECT_EQ (SpectrumAnalyser::hopSamples, hopSamples);
    EXPECT_EQ (SpectrumAnalyser::numBins, numBins);
}

TEST (SpectrumAnalyser, FullScaleSineGivesOneInItsBin)
{
    for (const auto bin : { 2, 3, 10, 93, 256, 400, 510 })
    {
        const auto frame = framesOf (sineInBin (bin)).back();
        EXPECT_NEAR (frame[(size_t) bin], 1.0f, 0.01f) << bin;
        EXPECT_NEAR (frame[(size_t) bin - 1], 0.5f, 0.01f) << bin;
        EXPECT_NEAR (frame[(size_t) bin + 1], 0.5f, 0.01f) << bin;
    }
}

TEST (SpectrumAnalyser, SineShowsNowhereElse)
{
    const auto frame = framesOf (sineInBin (100)).back();

    for (int bin = 0; bin < numBins; ++bin)
    {
        if (std::abs (bin - 100) > 2)
        {
            EXPECT_LT (frame[(size_t) bin], 0.001f) << bin;
        }
    }
}

TEST (SpectrumAnalyser, MagnitudeFollowsTheLevel)
{
    EXPECT_NEAR (framesOf (sineInBin (50, 0.25f)).back()[50], 0.25f, 0.0025f);
    EXPECT_NEAR (framesOf (sineInBin (50, 4.0f)).back()[50], 4.0f, 0.04f);
}

TEST (SpectrumAnalyser, ConstantShowsTwiceItsLevelAtZeroHertz)
{
    EXPECT_NEAR (framesOf (constant (4 * hopSamples, 0.5f)).back()[0], 1.0f, 0.001f);
}

TEST (SpectrumAnalyser, SilenceGivesZeros)
{
    for (const auto& frame : framesOf (constant (4 * hopSamples, 0.0f)))
        EXPECT_THAT (frame, Each (0.0f));
}

TEST (SpectrumAnalyser, IsTheTransformOfTheLastTwoHopsAndStartsFromSilence)
{
    const auto signal = noise (4 * hopSamples, 1);
    const auto frames = framesOf (signal);
    ASSERT_EQ (frames.size(), 4u);

    std::vector<double> withSilenceBefore ((size_t) hopSamples);
    withSilenceBefore.insert (withSilenceBefore.end(), signal.begin(), signal.end());

    for (size_t index = 0; index < frames.size(); ++index)
    {
        const auto begin = withSilenceBefore.begin() + (int) index * hopSamples;
        const std::vector<double> window (begin, begin + windowSamples);

        // Single precision in sums of a thousand terms is good for five digits.
        for (int bin = 0; bin < numBins; ++bin)
            ASSERT_NEAR (frames[index][(size_t) bin], expectedMagnitude (window, bin), 1.0e-5) << index << ' ' << bin;
    }
}

TEST (SpectrumAnalyser, ClickIsSeenInTwoFrames)
{
    const auto frames = framesOf (cv::test::impulse (4 * hopSamples, hopSamples + 256));

    EXPECT_THAT (frames[0], Each (0.0f));
    EXPECT_GT (frames[1][100], 0.001f);
    EXPECT_GT (frames[2][100], 0.001f);
    EXPECT_THAT (frames[3], Each (0.0f));
}
} // namespace
} // namespace cv::varlo
