#include "dsp/FeedbackConditioner.h"
#include "support/Signals.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::constant;
using cv::test::firstDifference;
using cv::test::noise;

constexpr juce::dsp::ProcessSpec spec { 44100.0, 512, 2 };
constexpr int oneSecond = 44100;

/** +1 dB as a linear level: where the limiter sets in. */
const auto threshold = std::pow (10.0f, 0.05f);

void prepareAt (FeedbackConditioner& conditioner, float cutoffHz)
{
    conditioner.setCutoff (cutoffHz);
    conditioner.prepare (spec);
}

std::vector<float> run (FeedbackConditioner& conditioner, int channel, std::vector<float> signal)
{
    for (auto& sample : signal)
        sample = conditioner.processSample (channel, sample);

    return signal;
}

std::vector<float> runLadder (float cutoffHz, std::vector<float> signal)
{
    FeedbackLadder ladder;
    ladder.setCutoff (cutoffHz);
    ladder.prepare (spec.sampleRate);

    for (auto& sample : signal)
        sample = ladder.processSample (sample);

    return signal;
}

/** The input level at which a steady signal leaves the ladder at `level`. */
float inputForLadderLevel (float level, float cutoffHz)
{
    return level / runLadder (cutoffHz, constant (oneSecond, 1.0f)).back();
}

TEST (FeedbackConditioner, SignalJustBelowOneDecibelPassesTheLimiterUnchanged)
{
    const auto signal = constant (oneSecond, inputForLadderLevel (threshold * 0.999f, 5000.0f));

    FeedbackConditioner conditioner;
    prepareAt (conditioner, 5000.0f);
    EXPECT_EQ (firstDifference (run (conditioner, 0, signal), runLadder (5000.0f, signal)), -1);
}

TEST (FeedbackConditioner, SteadyLevelOfTwoSettlesAt1Point1285)
{
    FeedbackConditioner conditioner;
    prepareAt (conditioner, 5000.0f);

    const auto output = run (conditioner, 0, constant (oneSecond, inputForLadderLevel (2.0f, 5000.0f)));
    EXPECT_NEAR (output.back(), 1.1285f, 0.0001f);
    EXPECT_NEAR (output.back(), threshold * std::pow (2.0f / threshold, 0.01f), 1.0e-5f);
}

TEST (FeedbackConditioner, LimiterFollowsInFiveMillisecondsAndLetsGoInFifty)
{
    // The envelope covers 1 - exp (-2 pi) of a step in one attack or release time: it starts at once,
    // and 5 ms after a step to 2.0 the gain is within half a percent of its end.
    FeedbackConditioner conditioner;
    prepareAt (conditioner, 20000.0f);

    const auto level = inputForLadderLevel (2.0f, 20000.0f);
    const auto attack = run (conditioner, 0, constant (oneSecond / 200, level));
    EXPECT_GT (attack[30], 1.5f);
    EXPECT_NEAR (attack.back(), 1.1285f, 0.006f);

    // On a step down to 0.5 the envelope decays as 0.5 + 1.5 exp (-2 pi t / 50 ms). It falls below the
    // threshold, where the gain becomes 1, after 50 ms / 2 pi * ln (1.5 / 0.622) = 7 ms.
    const auto quiet = inputForLadderLevel (0.5f, 20000.0f);
    const auto release = run (conditioner, 0, constant (oneSecond / 100, quiet));
    EXPECT_LT (release[(size_t) (0.0065 * spec.sampleRate)], 0.49f);
    EXPECT_NEAR (release[(size_t) (0.0075 * spec.sampleRate)], 0.5f, 0.001f);
}

TEST (FeedbackConditioner, ChannelsKeepApart)
{
    FeedbackConditioner busy;
    FeedbackConditioner idle;
    prepareAt (busy, 5000.0f);
    prepareAt (idle, 5000.0f);
    run (busy, 0, noise (1000, 1, 8.0f));

    const auto signal = noise (1000, 2);
    EXPECT_EQ (firstDifference (run (busy, 1, signal), run (idle, 1, signal)), -1);
}

TEST (FeedbackConditioner, ClearAndPrepareEmptyLaddersAndEnvelopes)
{
    const auto signal = noise (1000, 3, 3.0f);

    for (const auto clearByPrepare : { false, true })
    {
        FeedbackConditioner used;
        FeedbackConditioner fresh;
        prepareAt (used, 5000.0f);
        prepareAt (fresh, 5000.0f);
        run (used, 0, noise (1000, 4, 8.0f));

        if (clearByPrepare)
            used.prepare (spec);
        else
            used.clear();

        EXPECT_EQ (firstDifference (run (used, 0, signal), run (fresh, 0, signal)), -1) << clearByPrepare;
    }
}
} // namespace
} // namespace cv::varlo
