#include "dsp/DegradeStage.h"
#include "support/Signals.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::channelOf;
using cv::test::firstDifference;
using cv::test::noise;
using cv::test::toBuffer;

int holdLengthAt (float amount, float sampleRate)
{
    DegradeStage stage;
    stage.update (amount, sampleRate);
    return stage.getHoldLength();
}

std::vector<float> run (DegradeStage& stage, const std::vector<float>& signal)
{
    auto buffer = toBuffer ({ signal });
    stage.process (buffer);
    return channelOf (buffer, 0);
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
    stage.update (0.0f, 48000.0f);
    const auto signal = noise (1000, 1);
    EXPECT_EQ (firstDifference (run (stage, signal), signal), -1);
}

TEST (DegradeStage, FullAmountIsTheHeldSignalOnly)
{
    DegradeStage stage;
    stage.update (1.0f, 44100.0f);
    const auto signal = noise (2000, 2);
    const auto output = run (stage, signal);

    for (size_t i = 0; i < output.size(); ++i)
        ASSERT_EQ (output[i], signal[i - i % 441]) << i;
}

TEST (DegradeStage, HalfAmountBlendsHeldAndCleanSignal)
{
    DegradeStage stage;
    stage.update (0.5f, 48000.0f);
    const auto signal = noise (1000, 3);
    const auto output = run (stage, signal);

    for (size_t i = 0; i < output.size(); ++i)
        ASSERT_FLOAT_EQ (output[i], 0.5f * signal[i - i % 29] + 0.5f * signal[i]) << i;
}

TEST (DegradeStage, ChangedAmountCapturesAfreshAndUnchangedOneCountsOn)
{
    DegradeStage stage;
    stage.update (1.0f, 48000.0f);
    run (stage, noise (100, 4));

    stage.update (1.0f, 48000.0f);
    const auto kept = run (stage, noise (100, 5));
    EXPECT_EQ (kept.front(), noise (100, 4).front());

    stage.update (0.999f, 48000.0f);
    const auto moved = run (stage, noise (100, 6));
    EXPECT_FLOAT_EQ (moved.front(), noise (100, 6).front());

    stage.update (0.999f, 44100.0f);
    const auto newRate = run (stage, noise (100, 7));
    EXPECT_FLOAT_EQ (newRate.front(), noise (100, 7).front());
}

TEST (DegradeStage, ChannelsHoldTheirOwnValues)
{
    DegradeStage stage;
    stage.update (1.0f, 48000.0f);
    auto buffer = toBuffer ({ noise (100, 8), noise (100, 9) });
    stage.process (buffer);

    EXPECT_EQ (buffer.getSample (0, 99), noise (100, 8).front());
    EXPECT_EQ (buffer.getSample (1, 99), noise (100, 9).front());
}

TEST (DegradeStage, MoreThanTwoChannelsAreCleared)
{
    DegradeStage stage;
    stage.update (0.0f, 48000.0f);
    auto buffer = toBuffer ({ noise (100, 1), noise (100, 2), noise (100, 3) });
    stage.process (buffer);

    for (int channel = 0; channel < 3; ++channel)
        EXPECT_EQ (buffer.getMagnitude (channel, 0, 100), 0.0f);
}
} // namespace
} // namespace cv::varlo
