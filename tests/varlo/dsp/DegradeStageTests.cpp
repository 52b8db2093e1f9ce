#include "support/Signals.h"
#include "varlo/dsp/DegradeStage.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::firstDifference;
using cv::test::noise;

void set (DegradeStage& stage, float amount, float sampleRate)
{
    stage.prepare (sampleRate);
    stage.setAmount (amount);
}

int holdLengthAt (float amount, float sampleRate)
{
    DegradeStage stage;
    set (stage, amount, sampleRate);
    return stage.getHoldLength();
}

std::vector<Frame> runFrames (DegradeStage& stage,
                              const std::vector<float>& left,
                              const std::vector<float>& right,
                              int numChannels = 2)
{
    std::vector<Frame> source;

    for (size_t i = 0; i < left.size(); ++i)
        source.emplace_back (left[i], right[i]);

    std::vector<Frame> output (source.size());
    stage.process (source.data(), output.data(), (int) source.size(), numChannels);
    return output;
}

std::vector<float> run (DegradeStage& stage, const std::vector<float>& signal)
{
    std::vector<float> output;

    for (const auto& frame : runFrames (stage, signal, signal))
        output.push_back (frame.left());

    return output;
}

TEST (DegradeStage, HoldLengthFollowsItsCurve)
{
    const std::vector<std::pair<float, int>> at48000Hz { { 0.0f, 1 },    { 0.1f, 6 },   { 0.25f, 10 }, { 0.5f, 29 },
                                                         { 0.75f, 112 }, { 0.9f, 265 }, { 1.0f, 480 } };

    for (const auto& [amount, samples] : at48000Hz)
        EXPECT_EQ (holdLengthAt (amount, 48000.0f), samples) << amount;
}

TEST (DegradeStage, FullAmountRefreshesAHundredTimesASecondAtAnyRate)
{
    EXPECT_EQ (holdLengthAt (1.0f, 44100.0f), 441);
    EXPECT_EQ (holdLengthAt (1.0f, 22050.0f), 220); // 220.5; halves go to the even neighbour
    EXPECT_EQ (holdLengthAt (1.0f, 96000.0f), 960);
    EXPECT_EQ (holdLengthAt (1.0f, 192000.0f), 1920);
}

TEST (DegradeStage, HoldLengthIsAtLeastOne)
{
    EXPECT_EQ (holdLengthAt (1.0f, 10.0f), 1);
}

TEST (DegradeStage, ZeroAmountIsTransparent)
{
    DegradeStage stage;
    set (stage, 0.0f, 48000.0f);
    const auto signal = noise (1000, 1);
    EXPECT_EQ (firstDifference (run (stage, signal), signal), -1);
}

TEST (DegradeStage, FullAmountIsTheHeldSignalOnly)
{
    DegradeStage stage;
    set (stage, 1.0f, 44100.0f);
    const auto signal = noise (2000, 2);
    const auto output = run (stage, signal);

    for (size_t i = 0; i < output.size(); ++i)
        ASSERT_EQ (output[i], signal[i - i % 441]) << i;
}

TEST (DegradeStage, HalfAmountBlendsHeldAndCleanSignal)
{
    DegradeStage stage;
    set (stage, 0.5f, 48000.0f);
    const auto signal = noise (1000, 3);
    const auto output = run (stage, signal);

    for (size_t i = 0; i < output.size(); ++i)
        ASSERT_FLOAT_EQ (output[i], 0.5f * signal[i - i % 29] + 0.5f * signal[i]) << i;
}

TEST (DegradeStage, ChangedAmountCapturesAfreshAndUnchangedOneCountsOn)
{
    DegradeStage stage;
    set (stage, 1.0f, 48000.0f);
    run (stage, noise (100, 4));

    set (stage, 1.0f, 48000.0f);
    const auto kept = run (stage, noise (100, 5));
    EXPECT_EQ (kept.front(), noise (100, 4).front());

    set (stage, 0.999f, 48000.0f);
    const auto moved = run (stage, noise (100, 6));
    EXPECT_FLOAT_EQ (moved.front(), noise (100, 6).front());

    set (stage, 0.999f, 44100.0f);
    const auto newRate = run (stage, noise (100, 7));
    EXPECT_FLOAT_EQ (newRate.front(), noise (100, 7).front());
}

TEST (DegradeStage, OnlyTheZeroAmountCallsItselfTransparent)
{
    DegradeStage stage;
    set (stage, 0.0f, 48000.0f);
    EXPECT_TRUE (stage.isTransparent());
    set (stage, 0.001f, 48000.0f);
    EXPECT_FALSE (stage.isTransparent());
}

TEST (DegradeStage, ChannelsHoldTheirOwnValues)
{
    DegradeStage stage;
    set (stage, 1.0f, 48000.0f);
    const auto output = runFrames (stage, noise (100, 8), noise (100, 9));

    EXPECT_EQ (output[99].left(), noise (100, 8).front());
    EXPECT_EQ (output[99].right(), noise (100, 9).front());
}

TEST (DegradeStage, SecondChannelWaitsWhileOnlyTheFirstRuns)
{
    // 100 frames of both, 441 of the first alone: the first has captured anew, the second holds on for the rest of
    // its own 441.
    DegradeStage stage;
    set (stage, 1.0f, 44100.0f);
    runFrames (stage, noise (100, 1), noise (100, 2));
    runFrames (stage, noise (441, 3), noise (441, 4), 1);
    const auto output = runFrames (stage, noise (1000, 5), noise (1000, 6));

    EXPECT_EQ (output[0].left(), noise (441, 3)[341]);
    EXPECT_EQ (output[0].right(), noise (100, 2)[0]);
    EXPECT_EQ (output[340].right(), noise (100, 2)[0]);
    EXPECT_EQ (output[341].right(), noise (1000, 6)[341]);
    EXPECT_EQ (output[341].left(), noise (1000, 5)[341]);
}

TEST (DegradeStage, AnyCutOfTheSignalGivesTheSame)
{
    const auto signal = noise (5000, 10);
    DegradeStage whole;
    set (whole, 0.6f, 44100.0f);
    const auto expected = run (whole, signal);

    DegradeStage cut;
    set (cut, 0.6f, 44100.0f);
    juce::Random random (11);
    std::vector<float> output;

    while (output.size() < signal.size())
    {
        const auto length = juce::jmin (signal.size() - output.size(), (size_t) random.nextInt (100));
        const auto begin = signal.begin() + (std::ptrdiff_t) output.size();
        const auto piece = run (cut, { begin, begin + (std::ptrdiff_t) length });
        output.insert (output.end(), piece.begin(), piece.end());
    }

    EXPECT_EQ (firstDifference (output, expected), -1);
}
} // namespace
} // namespace cv::varlo
