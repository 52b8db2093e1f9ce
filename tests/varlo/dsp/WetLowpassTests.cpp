#include "support/Signals.h"
#include "varlo/dsp/WetLowpass.h"

#include <gmock/gmock.h>
#include <juce_dsp/juce_dsp.h>

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

void prepareAt (WetLowpass& lowpass, float cutoffHz, float q, double sampleRate = rate)
{
    lowpass.setCutoff (cutoffHz);
    lowpass.setResonance (q);
    lowpass.prepare (sampleRate);
}

WetLowpass::Coefficients nextCoefficients (WetLowpass& lowpass, int numChannels)
{
    WetLowpass::Coefficients coefficients;
    lowpass.fillCoefficients (&coefficients, 1, numChannels);
    return coefficients;
}

std::vector<float> run (WetLowpass& lowpass, std::vector<float> signal)
{
    for (auto& sample : signal)
        sample = lowpass.memory.process (Frame (sample), nextCoefficients (lowpass, 2)).right();

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
    lowpass.prepare (48000.0);
    EXPECT_FLOAT_EQ (lowpass.getTargetCutoff(), 20000.0f);

    lowpass.setCutoff (23999.5f);
    EXPECT_FLOAT_EQ (lowpass.getTargetCutoff(), 23999.0f);
}

TEST (WetLowpass, BeforePrepareTheCutoffIsOnlyNoted)
{
    WetLowpass lowpass;
    lowpass.setCutoff (5000.0f);
    EXPECT_FLOAT_EQ (lowpass.getTargetCutoff(), 0.0f);
    lowpass.prepare (rate);
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

    prepared.prepare (rate);

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
    prepared.prepare (96000.0);
    EXPECT_EQ (firstDifference (run (prepared, signal), expected), -1);

    prepared.clear();
    EXPECT_EQ (firstDifference (run (prepared, signal), expected), -1);
}

TEST (WetLowpass, GivesWhatJucesFilterGives)
{
    juce::Random random (8);

    for (const auto sampleRate : { 8000.0, 22050.0, 32000.0, 44100.0, 48000.0, 96000.0, 192000.0 })
    {
        WetLowpass lowpass;
        prepareAt (lowpass, 5000.0f, lowestQ, sampleRate);

        juce::dsp::StateVariableTPTFilter<float> filter;
        filter.setType (juce::dsp::StateVariableTPTFilterType::lowpass);
        filter.prepare ({ sampleRate, 512, 2 });
        const auto highest = (float) sampleRate * 0.5f - 1.0f;
        juce::SmoothedValue<float> cutoff (juce::jmin (5000.0f, highest));
        juce::SmoothedValue<float> q (lowestQ);
        cutoff.reset (sampleRate, WetLowpass::rampSeconds);
        q.reset (sampleRate, WetLowpass::rampSeconds);

        for (int i = 0; i < 100000; ++i)
        {
            if (random.nextInt (1500) == 0)
            {
                const auto hz = 20.0f * std::pow (1000.0f, random.nextFloat());
                lowpass.setCutoff (hz);
                cutoff.setTargetValue (juce::jmin (highest, hz));
            }

            if (random.nextInt (1500) == 0)
            {
                const auto newQ = 0.1f + 20.0f * std::pow (random.nextFloat(), 3.0f);
                lowpass.setResonance (newQ);
                q.setTargetValue (newQ);
            }

            filter.setCutoffFrequency (cutoff.getNextValue());
            filter.setResonance (q.getNextValue());

            const Frame input (2.0f * random.nextFloat() - 1.0f, 2.0f * random.nextFloat() - 1.0f);
            const auto output = lowpass.memory.process (input, nextCoefficients (lowpass, 2));
            ASSERT_EQ (output.left(), filter.processSample (0, input.left())) << sampleRate << ", sample " << i;
            ASSERT_EQ (output.right(), filter.processSample (1, input.right())) << sampleRate << ", sample " << i;
        }
    }
}

TEST (WetLowpass, SecondChannelsRampWaitsWhileOnlyTheFirstRuns)
{
    WetLowpass lowpass;
    prepareAt (lowpass, 500.0f, lowestQ);
    lowpass.setCutoff (8000.0f);

    for (int i = 0; i < 441; ++i)
        nextCoefficients (lowpass, 1);

    EXPECT_FALSE (lowpass.isMoving (1));
    EXPECT_TRUE (lowpass.isMoving (2));
    const auto waited = run (lowpass, noise (1000, 9));

    WetLowpass never;
    prepareAt (never, 500.0f, lowestQ);
    never.setCutoff (8000.0f);
    EXPECT_EQ (firstDifference (waited, run (never, noise (1000, 9))), -1);
}

TEST (WetLowpass, PrepareAtTheSameRateEmptiesOnlyMemoriesThatAreNotFinite)
{
    constexpr auto nan = std::numeric_limits<float>::quiet_NaN();
    WetLowpass lowpass;
    prepareAt (lowpass, 5000.0f, lowestQ);
    lowpass.memory = { Frame (0.25f, nan), Frame (std::numeric_limits<float>::infinity(), 0.5f) };

    lowpass.prepare (rate);
    EXPECT_EQ (lowpass.memory.s1.left(), 0.25f);
    EXPECT_EQ (lowpass.memory.s1.right(), 0.0f);
    EXPECT_EQ (lowpass.memory.s2.left(), 0.0f);
    EXPECT_EQ (lowpass.memory.s2.right(), 0.5f);
}
} // namespace
} // namespace cv::varlo
