#include "dsp/WetLowpass.h"
#include "support/Signals.h"

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
constexpr float lowestQ = 0.1f;

juce::dsp::ProcessSpec specAt (double sampleRate)
{
    return { sampleRate, 512, 2 };
}

void prepareAt (WetLowpass& lowpass, float cutoffHz, float q, double sampleRate = rate)
{
    lowpass.setCutoff (cutoffHz);
    lowpass.setResonance (q);
    lowpass.prepare (specAt (sampleRate));
}

std::vector<float> run (WetLowpass& lowpass, std::vector<float> signal)
{
    lowpass.process (signal.data(), (int) signal.size());
    return signal;
}

double gainInDecibels (float cutoffHz, float q, double frequencyHz)
{
    WetLowpass lowpass;
    prepareAt (lowpass, cutoffHz, q);
    const auto output = run (lowpass, sine (2 * oneSecond, frequencyHz, rate));
    return toDecibels (peak (output, oneSecond, output.size()));
}

TEST (WetLowpass, GainAtTheCutoffIsTheQ)
{
    EXPECT_NEAR (gainInDecibels (1000.0f, lowestQ, 1000.0), -20.0, 0.1);
    EXPECT_NEAR (gainInDecibels (1000.0f, std::sqrt (0.5f), 1000.0), -3.0, 0.1);
    EXPECT_NEAR (gainInDecibels (1000.0f, 20.1f, 1000.0), toDecibels (20.1), 0.1);
}

TEST (WetLowpass, LowestQSoftensTheBandBelowTheCutoff)
{
    EXPECT_LT (gainInDecibels (1000.0f, lowestQ, 200.0), -6.0);
    EXPECT_NEAR (gainInDecibels (1000.0f, lowestQ, 10.0), 0.0, 0.1);
}

TEST (WetLowpass, CutoffIsKeptOneHertzUnderHalfTheRate)
{
    WetLowpass lowpass;
    prepareAt (lowpass, 20000.0f, lowestQ, 32000.0);
    EXPECT_FLOAT_EQ (lowpass.getTargetCutoff(), 15999.0f);

    // The request itself is remembered: at a higher rate it takes effect in full.
    lowpass.prepare (specAt (48000.0));
    EXPECT_FLOAT_EQ (lowpass.getTargetCutoff(), 20000.0f);

    lowpass.setCutoff (23999.5f);
    EXPECT_FLOAT_EQ (lowpass.getTargetCutoff(), 23999.0f);
}

TEST (WetLowpass, BeforePrepareTheCutoffIsOnlyNoted)
{
    WetLowpass lowpass;
    lowpass.setCutoff (5000.0f);
    EXPECT_FLOAT_EQ (lowpass.getTargetCutoff(), 0.0f);
    lowpass.prepare (specAt (rate));
    EXPECT_FLOAT_EQ (lowpass.getTargetCutoff(), 5000.0f);
}

TEST (WetLowpass, CutoffThatIsNotAboveZeroIsNotTakenOver)
{
    WetLowpass lowpass;
    prepareAt (lowpass, 5000.0f, lowestQ);
    lowpass.setCutoff (0.0f);
    lowpass.setCutoff (-1.0f);
    EXPECT_FLOAT_EQ (lowpass.getTargetCutoff(), 5000.0f);
}

TEST (WetLowpass, NewSettingsArriveAfterTenMilliseconds)
{
    // Silence leaves the memory empty. With the ramps' last step on the first sample of the signal the
    // filter is bit by bit one that was prepared with the new settings; one step earlier it isn't.
    constexpr int rampSamples = 441;
    const auto signal = noise (1000, 1);

    for (const auto silentSamples : { rampSamples - 2, rampSamples - 1 })
    {
        WetLowpass moved;
        prepareAt (moved, 500.0f, lowestQ);
        moved.setCutoff (8000.0f);
        moved.setResonance (5.0f);
        run (moved, constant (silentSamples, 0.0f));

        WetLowpass rested;
        prepareAt (rested, 8000.0f, 5.0f);
        const auto same = firstDifference (run (moved, signal), run (rested, signal)) < 0;
        EXPECT_EQ (same, silentSamples == rampSamples - 1) << silentSamples;
    }
}

TEST (WetLowpass, ChangeWithinTheToleranceDoesNotDisturbARamp)
{
    WetLowpass disturbed;
    WetLowpass calm;

    for (auto* lowpass : { &disturbed, &calm })
    {
        prepareAt (*lowpass, 500.0f, lowestQ);
        lowpass->setCutoff (8000.0f);
        run (*lowpass, noise (100, 2));
    }

    disturbed.setCutoff (std::nextafter (8000.0f, 9000.0f));

    const auto signal = noise (1000, 3);
    EXPECT_EQ (firstDifference (run (disturbed, signal), run (calm, signal)), -1);
}

TEST (WetLowpass, PrepareAtTheSameRateKeepsMemoryAndRamps)
{
    WetLowpass prepared;
    WetLowpass untouched;

    for (auto* lowpass : { &prepared, &untouched })
    {
        prepareAt (*lowpass, 500.0f, lowestQ);
        lowpass->setCutoff (8000.0f);
        run (*lowpass, noise (100, 4));
    }

    prepared.prepare (specAt (rate));

    const auto signal = noise (1000, 5);
    EXPECT_EQ (firstDifference (run (prepared, signal), run (untouched, signal)), -1);
}

TEST (WetLowpass, PrepareAtANewRateAndClearEmptyTheMemory)
{
    const auto signal = noise (1000, 6);

    WetLowpass fresh;
    prepareAt (fresh, 5000.0f, 5.0f, 96000.0);
    const auto expected = run (fresh, signal);

    WetLowpass prepared;
    prepareAt (prepared, 5000.0f, 5.0f);
    run (prepared, noise (1000, 7));
    prepared.prepare (specAt (96000.0));
    EXPECT_EQ (firstDifference (run (prepared, signal), expected), -1);

    prepared.clear();
    EXPECT_EQ (firstDifference (run (prepared, signal), expected), -1);
}
} // namespace
} // namespace cv::varlo
