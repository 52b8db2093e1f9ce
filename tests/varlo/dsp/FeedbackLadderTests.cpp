#include "support/Signals.h"
#include "varlo/dsp/FeedbackLadder.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::constant;
using cv::test::firstDifference;
using cv::test::noise;
using cv::test::peak;
using cv::test::sine;
using cv::test::toDecibels;

constexpr double rate = 44100.0;
constexpr int oneSecond = 44100;
constexpr int rampSamples = 441;

FeedbackLadder makeLadder (float cutoffHz, double sampleRate = rate)
{
    FeedbackLadder ladder;
    ladder.setCutoff (cutoffHz);
    ladder.prepare (sampleRate);
    return ladder;
}

FeedbackLadder::Coefficients nextCoefficients (FeedbackLadder& ladder, int numChannels)
{
    FeedbackLadder::Coefficients coefficients;
    ladder.fillCoefficients (&coefficients, 1, numChannels);
    return coefficients;
}

std::vector<float> run (FeedbackLadder& ladder, std::vector<float> signal)
{
    for (auto& sample : signal)
        sample = ladder.memory.process (Frame (sample), nextCoefficients (ladder, 2)).right();

    return signal;
}

float settledLevel (float cutoffHz)
{
    auto ladder = makeLadder (cutoffHz);
    return run (ladder, constant (oneSecond, 1.0f)).back();
}

double gainInDecibels (float cutoffHz, double frequencyHz)
{
    auto ladder = makeLadder (cutoffHz);
    const auto output = run (ladder, sine (2 * oneSecond, frequencyHz, rate));
    return toDecibels (peak (output, oneSecond, output.size()));
}

TEST (FeedbackLadder, SteadyInputSettlesALittleAboveItself)
{
    EXPECT_NEAR (settledLevel (5000.0f), 1.027f, 0.0005f);
    EXPECT_NEAR (settledLevel (15000.0f), 1.074f, 0.0005f);
}

TEST (FeedbackLadder, SlopeIsGentlerAtAHighCutoff)
{
    EXPECT_NEAR (gainInDecibels (5000.0f, 5000.0), -12.7, 0.05);
    EXPECT_NEAR (gainInDecibels (15000.0f, 20000.0), -17.5, 0.1);
}

TEST (FeedbackLadder, CoefficientsShowInTheFirstSamplesOfAnImpulse)
{
    // From silence the first output is g^3 x; the second one adds g^2 s0 and what the later stages
    // remember. Both are worked out here from g = 0.2712 and a = -0.4577.
    auto ladder = makeLadder (5000.0f);
    const auto output = run (ladder, { 1.0f, 0.0f });

    const auto g = 0.2712;
    const auto a = -0.4577;
    const auto s0 = g - a * g;
    const auto s1 = g * g - a * g * g;
    const auto s2 = g * g * g - a * g * g * g;
    const auto s3 = g * g * g * g - a * g * g * g;

    EXPECT_NEAR (output[0], g * g * g, 2.0e-5);
    EXPECT_NEAR (output[1], s3 + g * (s2 + g * (s1 + g * s0)), 2.0e-4);
}

TEST (FeedbackLadder, CutoffStepArrivesAfterTenMilliseconds)
{
    // While silent the filter remembers nothing. With the ramp's last step on the first sample of the
    // signal it is bit by bit the filter that was prepared at the new cutoff; one step earlier it isn't.
    const auto signal = noise (1000, 1);

    for (const auto silentSamples : { rampSamples - 2, rampSamples - 1 })
    {
        auto stepped = makeLadder (500.0f);
        stepped.setCutoff (8000.0f);
        run (stepped, constant (silentSamples, 0.0f));

        auto rested = makeLadder (8000.0f);
        const auto same = firstDifference (run (stepped, signal), run (rested, signal)) < 0;
        EXPECT_EQ (same, silentSamples == rampSamples - 1) << silentSamples;
    }
}

TEST (FeedbackLadder, CutoffAboveHalfTheRateStaysFinite)
{
    auto ladder = makeLadder (20000.0f, 32000.0);
    const auto output = run (ladder, noise (32000, 2));

    for (const auto sample : output)
        ASSERT_TRUE (std::isfinite (sample));

    // Half the rate is the highest cutoff that takes effect.
    auto capped = makeLadder (16000.0f, 32000.0);
    EXPECT_EQ (firstDifference (output, run (capped, noise (32000, 2))), -1);
}

TEST (FeedbackLadder, ClearStartsFromSilenceInAllStages)
{
    auto used = makeLadder (5000.0f);
    auto fresh = makeLadder (5000.0f);
    run (used, noise (1000, 3));
    used.clear();

    const auto signal = noise (1000, 4);
    EXPECT_EQ (firstDifference (run (used, signal), run (fresh, signal)), -1);
}

TEST (FeedbackLadder, PrepareAtTheSameRateClearsMemoryButKeepsTheRamp)
{
    auto prepared = makeLadder (500.0f);
    prepared.setCutoff (8000.0f);
    run (prepared, noise (100, 5));
    prepared.prepare (rate);

    auto cleared = makeLadder (500.0f);
    cleared.setCutoff (8000.0f);
    run (cleared, noise (100, 5));
    cleared.clear();

    const auto signal = noise (1000, 6);
    EXPECT_EQ (firstDifference (run (prepared, signal), run (cleared, signal)), -1);
}

TEST (FeedbackLadder, PrepareAtANewRateArrivesAtTheTarget)
{
    auto ladder = makeLadder (500.0f);
    ladder.setCutoff (8000.0f);
    run (ladder, noise (100, 7));
    ladder.prepare (96000.0);

    auto fresh = makeLadder (8000.0f, 96000.0);
    const auto signal = noise (1000, 8);
    EXPECT_EQ (firstDifference (run (ladder, signal), run (fresh, signal)), -1);
}

TEST (FeedbackLadder, RateThatIsNotAboveZeroChangesNothing)
{
    for (const auto badRate : { 0.0, -44100.0, std::numeric_limits<double>::quiet_NaN() })
    {
        auto ladder = makeLadder (5000.0f);
        auto untouched = makeLadder (5000.0f);
        run (ladder, noise (100, 9));
        run (untouched, noise (100, 9));

        ladder.prepare (badRate);

        const auto signal = noise (100, 10);
        EXPECT_EQ (firstDifference (run (ladder, signal), run (untouched, signal)), -1) << badRate;
    }
}

TEST (FeedbackLadder, ChannelsKeepApart)
{
    auto ladder = makeLadder (5000.0f);
    auto alone = makeLadder (5000.0f);
    const auto left = noise (1000, 11);
    const auto right = noise (1000, 12);
    const auto expected = run (alone, right);

    for (size_t i = 0; i < left.size(); ++i)
        ASSERT_EQ (ladder.memory.process ({ left[i], right[i] }, nextCoefficients (ladder, 2)).right(), expected[i])
            << i;
}

TEST (FeedbackLadder, SecondChannelsRampWaitsWhileOnlyTheFirstRuns)
{
    auto ladder = makeLadder (500.0f);
    ladder.setCutoff (8000.0f);

    for (int i = 0; i < rampSamples; ++i)
        nextCoefficients (ladder, 1);

    EXPECT_FALSE (ladder.isMoving (1));
    EXPECT_TRUE (ladder.isMoving (2));
    const auto waited = run (ladder, noise (1000, 13));

    auto never = makeLadder (500.0f);
    never.setCutoff (8000.0f);
    EXPECT_EQ (firstDifference (waited, run (never, noise (1000, 13))), -1);
}
} // namespace
} // namespace cv::varlo
