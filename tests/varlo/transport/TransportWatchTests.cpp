#include "support/ProcessorHarness.h"
#include "varlo/transport/TransportWatch.h"

#include <gmock/gmock.h>

#include <cmath>

namespace cv::varlo
{
namespace
{
using cv::test::FakePlayHead;
using cv::test::ProcessorHarness;

constexpr int blockSize = 512;
constexpr juce::int64 limit = 2 * blockSize;
constexpr juce::int64 start = 100000;

class TransportWatchTest : public testing::Test
{
protected:
    TransportWatchTest()
    {
        watch.prepare (blockSize);
        host.type = juce::PluginHostType::UnknownHost;
    }

    bool moveTo (const juce::AudioPlayHead::PositionInfo& position, int numSamples = blockSize)
    {
        harness.playHead.position = position;
        return watch.hasJumped (numSamples, host);
    }

    bool moveTo (juce::int64 timeInSamples, int numSamples = blockSize)
    {
        return moveTo (FakePlayHead::playingAt (timeInSamples), numSamples);
    }

    static juce::AudioPlayHead::PositionInfo loopingAt (juce::int64 timeInSamples)
    {
        auto position = FakePlayHead::playingAt (timeInSamples);
        position.setIsLooping (true);
        return position;
    }

    static juce::AudioPlayHead::PositionInfo atTempo (juce::int64 timeInSamples, double bpm)
    {
        auto position = FakePlayHead::playingAt (timeInSamples);
        position.setBpm (bpm);
        return position;
    }

    ProcessorHarness harness;
    TransportWatch watch { harness.processor };
    juce::PluginHostType host;
};

TEST_F (TransportWatchTest, SteadyPlaybackFromTheStartIsNoJump)
{
    for (int block = 0; block < 100; ++block)
        EXPECT_FALSE (moveTo (block * blockSize)) << block;
}

TEST_F (TransportWatchTest, StartFarIntoTheSongIsOneJump)
{
    EXPECT_TRUE (moveTo (start));
    EXPECT_FALSE (moveTo (start + blockSize));
}

TEST_F (TransportWatchTest, TwoBlocksAheadIsNoJumpAndOneSampleMoreIs)
{
    moveTo (start);
    EXPECT_FALSE (moveTo (start + limit));
    EXPECT_TRUE (moveTo (start + limit + limit + 1));
}

TEST_F (TransportWatchTest, TwoBlocksBackIsNoJumpAndOneSampleMoreIs)
{
    moveTo (start);
    EXPECT_FALSE (moveTo (start - limit));
    EXPECT_TRUE (moveTo (start - limit - limit - 1));
}

TEST_F (TransportWatchTest, StepBackInsideALoopIsNoJumpButAheadIs)
{
    moveTo (start);
    EXPECT_FALSE (moveTo (loopingAt (0)));
    EXPECT_TRUE (moveTo (loopingAt (start)));
}

TEST_F (TransportWatchTest, LargestBlockSeenSetsTheLimit)
{
    moveTo (start);
    EXPECT_FALSE (moveTo (start + 4 * blockSize, 2 * blockSize));
    EXPECT_FALSE (moveTo (start + 8 * blockSize, 16));
    EXPECT_TRUE (moveTo (start + 12 * blockSize + 1, 16));

    // A new prepare starts from the host's block length again.
    watch.prepare (blockSize);
    EXPECT_TRUE (moveTo (start + 16 * blockSize, 16));
}

TEST_F (TransportWatchTest, StepsOverMoreThan32BitsAreJumps)
{
    constexpr auto farAway = juce::int64 { 1 } << 40;
    EXPECT_TRUE (moveTo (farAway));
    EXPECT_FALSE (moveTo (farAway + blockSize));
    EXPECT_TRUE (moveTo (blockSize));
}

TEST_F (TransportWatchTest, StoppedOrUnknownPositionIsNotTakenIn)
{
    moveTo (start);

    auto stopped = FakePlayHead::playingAt (0);
    stopped.setIsPlaying (false);
    EXPECT_FALSE (moveTo (stopped));

    auto timeless = FakePlayHead::playingAt (0);
    timeless.setTimeInSamples (juce::nullopt);
    EXPECT_FALSE (moveTo (timeless));

    harness.playHead.position = juce::nullopt;
    EXPECT_FALSE (watch.hasJumped (blockSize, host));

    harness.processor.setPlayHead (nullptr);
    EXPECT_FALSE (watch.hasJumped (blockSize, host));
    harness.processor.setPlayHead (&harness.playHead);

    EXPECT_FALSE (moveTo (start + blockSize));
}

TEST_F (TransportWatchTest, InLiveAJumpCountsOnlyAtASteadyTempo)
{
    host.type = juce::PluginHostType::AbletonLiveGeneric;
    moveTo (atTempo (start, 120.0));

    EXPECT_FALSE (moveTo (atTempo (2 * start, 121.0)));
    EXPECT_TRUE (moveTo (atTempo (3 * start, 121.0)));
    EXPECT_FALSE (moveTo (atTempo (0, 90.0)));
}

TEST_F (TransportWatchTest, InLiveATempoIsSteadyWithinWhatADoubleCanTell)
{
    host.type = juce::PluginHostType::AbletonLiveGeneric;
    const auto next = std::nextafter (120.0, 200.0);
    moveTo (atTempo (start, 120.0));

    EXPECT_TRUE (moveTo (atTempo (2 * start, next)));
    EXPECT_FALSE (moveTo (atTempo (3 * start, 120.0001)));
}

TEST_F (TransportWatchTest, InLiveTheFirstTempoIsAChangeFromNone)
{
    host.type = juce::PluginHostType::AbletonLiveGeneric;
    EXPECT_FALSE (moveTo (atTempo (start, 120.0)));
}

TEST_F (TransportWatchTest, PositionWithoutTempoKeepsTheTemposThatWere)
{
    host.type = juce::PluginHostType::AbletonLiveGeneric;
    moveTo (atTempo (start, 120.0));
    moveTo (atTempo (start + blockSize, 121.0));

    auto withoutTempo = FakePlayHead::playingAt (2 * start);
    withoutTempo.setBpm (juce::nullopt);
    EXPECT_FALSE (moveTo (withoutTempo));
}

TEST_F (TransportWatchTest, InOtherHostsTheTempoDoesNotMatter)
{
    moveTo (atTempo (start, 120.0));
    EXPECT_TRUE (moveTo (atTempo (2 * start, 121.0)));
}
} // namespace
} // namespace cv::varlo
