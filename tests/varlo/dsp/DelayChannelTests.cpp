#include "dsp/DelayChannel.h"
#include "support/Signals.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::constant;
using cv::test::impulse;
using cv::test::peak;
using cv::test::positionsAbove;
using cv::test::sine;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr float rate = 44100.0f;
constexpr int oneSecond = 44100;
constexpr int blockSize = 512;

void prepareAt (DelayChannel& channel, float seconds, float loopGain = 0.0f, float sampleRate = rate)
{
    channel.setDelaySeconds (seconds);
    channel.setLoopGain (loopGain);
    channel.prepare (blockSize, sampleRate);
}

std::vector<float> run (DelayChannel& channel, std::vector<float> signal)
{
    channel.process (signal.data(), (int) signal.size());
    return signal;
}

/** Upward crossings of zero per second of `rate`, over a part of the signal. */
double frequencyOf (const std::vector<float>& signal, int begin, int end)
{
    int crossings = 0;

    for (int i = begin + 1; i < end; ++i)
        if (signal[(size_t) i - 1] < 0.0f && signal[(size_t) i] >= 0.0f)
            ++crossings;

    return crossings * rate / (end - begin);
}

TEST (DelayChannel, OneMillisecondIs44SamplesAt44100Hz)
{
    DelayChannel channel;
    prepareAt (channel, 0.001f);
    EXPECT_THAT (positionsAbove (run (channel, impulse (1000)), 0.0f), ElementsAre (44));
}

TEST (DelayChannel, DelayOfZeroReturnsWhatWasJustWritten)
{
    DelayChannel channel;
    prepareAt (channel, 0.0f);
    EXPECT_THAT (positionsAbove (run (channel, impulse (100)), 0.0f), ElementsAre (0));
}

TEST (DelayChannel, LineHoldsTenSecondsExactly)
{
    for (const auto sampleRate : { 44100.0f, 48000.0f })
    {
        DelayChannel channel;
        prepareAt (channel, 10.0f, 0.0f, sampleRate);
        const auto tenSeconds = (int) (10.0f * sampleRate);
        EXPECT_THAT (positionsAbove (run (channel, impulse (tenSeconds + 1000)), 0.0f), ElementsAre (tenSeconds));
    }
}

TEST (DelayChannel, LongerDelayIsLimitedToTheLine)
{
    DelayChannel channel;
    prepareAt (channel, 11.0f);
    EXPECT_THAT (positionsAbove (run (channel, impulse (12 * oneSecond)), 0.0f), ElementsAre (10 * oneSecond));
}

TEST (DelayChannel, WithoutFeedbackThereIsOneEcho)
{
    DelayChannel channel;
    prepareAt (channel, 0.01f);
    EXPECT_THAT (positionsAbove (run (channel, impulse (oneSecond)), 0.0f), ElementsAre (441));
}

TEST (DelayChannel, EmptyFeedbackProcessorFeedsBackTheSampleAsItIs)
{
    // The value read at 441 is fed back with the next write, so the second echo comes 442 later.
    DelayChannel channel;
    prepareAt (channel, 0.01f, 0.5f);
    const auto output = run (channel, impulse (1500));

    EXPECT_THAT (positionsAbove (output, 0.0f), ElementsAre (441, 883, 1325));
    EXPECT_FLOAT_EQ (output[441], 1.0f);
    EXPECT_FLOAT_EQ (output[883], 0.5f);
    EXPECT_FLOAT_EQ (output[1325], 0.25f);
}

TEST (DelayChannel, FeedbackProcessorShapesOnlyWhatGoesBack)
{
    DelayChannel channel;
    channel.setFeedbackProcessor ([] (float delayed) { return -0.1f * delayed; });
    prepareAt (channel, 0.01f, 0.5f);
    const auto output = run (channel, impulse (1000));

    EXPECT_FLOAT_EQ (output[441], 1.0f);
    EXPECT_FLOAT_EQ (output[883], -0.05f);
}

TEST (DelayChannel, LoopGainArrivesAfterOneSecond)
{
    // A new gain of 0.92, heard on impulses that are fed back half way up the ramp and after it.
    DelayChannel channel;
    prepareAt (channel, 0.01f);
    channel.setLoopGain (0.92f);

    auto signal = constant (2 * oneSecond, 0.0f);
    signal[oneSecond / 2] = 1.0f;
    signal[oneSecond] = 1.0f;
    const auto output = run (channel, signal);

    EXPECT_NEAR (output[oneSecond / 2 + 883], 0.92f * (0.5f + 442.0f / rate), 0.0001f);
    EXPECT_FLOAT_EQ (output[oneSecond + 883], 0.92f);
}

TEST (DelayChannel, ShorterDelayGlidesForHalfASecondAndRaisesThePitch)
{
    // From 1 s to 0.1 s within 0.5 s the read position gains 0.9 s on the write: it moves at 2.8 times
    // the speed.
    DelayChannel channel;
    prepareAt (channel, 1.0f);
    run (channel, sine (2 * oneSecond, 441.0, rate));
    channel.setDelaySeconds (0.1f);

    const auto output = run (channel, sine (2 * oneSecond, 441.0, rate));
    EXPECT_NEAR (frequencyOf (output, 0, oneSecond / 2), 441.0 * 2.8, 5.0);
    EXPECT_NEAR (frequencyOf (output, oneSecond / 2 + 100, 2 * oneSecond), 441.0, 2.0);
}

TEST (DelayChannel, LongerDelayLowersThePitch)
{
    // From 0.1 s to 0.5 s within 0.5 s the read position moves at a fifth of the speed.
    DelayChannel channel;
    prepareAt (channel, 0.1f);
    run (channel, sine (2 * oneSecond, 441.0, rate));
    channel.setDelaySeconds (0.5f);

    const auto output = run (channel, sine (2 * oneSecond, 441.0, rate));
    EXPECT_NEAR (frequencyOf (output, 0, oneSecond / 2), 441.0 * 0.2, 3.0);
    EXPECT_NEAR (frequencyOf (output, oneSecond / 2 + 100, 2 * oneSecond), 441.0, 2.0);
}

TEST (DelayChannel, NewTargetDuringAGlideStartsAFullGlideFromThere)
{
    // 0.25 s into the glide from 1 s to 0.1 s the delay stands at 0.55 s. The next glide, to 0.5 s,
    // takes half a second again, so its speed is 1.1 although the way is short.
    DelayChannel channel;
    prepareAt (channel, 1.0f);
    run (channel, sine (2 * oneSecond, 441.0, rate));
    channel.setDelaySeconds (0.1f);
    run (channel, sine (oneSecond / 4, 441.0, rate));
    channel.setDelaySeconds (0.5f);

    const auto output = run (channel, sine (oneSecond, 441.0, rate));
    EXPECT_NEAR (frequencyOf (output, 100, oneSecond / 2), 441.0 * 1.1, 6.0);
}

TEST (DelayChannel, PrepareEmptiesTheLineAlsoAtTheSameRate)
{
    for (const auto newRate : { rate, 48000.0f })
    {
        DelayChannel channel;
        prepareAt (channel, 0.1f);
        run (channel, constant (1000, 1.0f));
        channel.prepare (blockSize, newRate);

        EXPECT_THAT (positionsAbove (run (channel, constant (oneSecond, 0.0f)), 0.0f), IsEmpty());
        EXPECT_THAT (positionsAbove (run (channel, impulse (oneSecond)), 0.0f), ElementsAre ((int) (0.1f * newRate)));
    }
}

TEST (DelayChannel, SampleThatWaitsToBeFedBackSurvivesClearAndPrepare)
{
    for (const auto clearByPrepare : { false, true })
    {
        DelayChannel channel;
        prepareAt (channel, 0.01f, 0.5f);
        run (channel, impulse (442)); // ends with the echo, which now waits to be fed back

        if (clearByPrepare)
            channel.prepare (blockSize, rate);
        else
            channel.clearLine();

        const auto output = run (channel, constant (500, 0.0f));
        EXPECT_THAT (positionsAbove (output, 0.0f), ElementsAre (441)) << clearByPrepare;
        EXPECT_FLOAT_EQ (output[441], 0.5f);
    }
}

TEST (DelayChannel, ClearLineLeavesTheRamps)
{
    DelayChannel channel;
    prepareAt (channel, 0.5f);
    channel.setDelaySeconds (0.1f);
    run (channel, constant (oneSecond / 4, 0.0f));
    channel.clearLine();

    // Half way the delay stands at 0.3 s and shrinks by 0.8 samples per sample: what is written now is
    // read when 0.3 s - 0.8 t = t, after a sixth of a second.
    const auto positions = positionsAbove (run (channel, constant (oneSecond / 4, 1.0f)), 0.0f);
    ASSERT_FALSE (positions.empty());
    EXPECT_NEAR (positions.front(), oneSecond / 6, 3);
}

TEST (DelayChannel, ChangeWithinTheToleranceIsNoNewTarget)
{
    // A step of one part in 2^24 is below the relative tolerance of single precision.
    DelayChannel channel;
    prepareAt (channel, 1.0f);
    channel.setDelaySeconds (0.5f);
    run (channel, constant (oneSecond / 4, 0.0f));
    channel.setDelaySeconds (std::nextafter (0.5f, 1.0f));
    run (channel, constant (oneSecond / 4 + 1, 0.0f));

    // The glide ended after its half second: a new one would still be under way.
    EXPECT_THAT (positionsAbove (run (channel, impulse (oneSecond)), 0.0f), ElementsAre (oneSecond / 2));
}

TEST (DelayChannel, BlockOfZeroSamplesDoesNothing)
{
    DelayChannel channel;
    prepareAt (channel, 0.001f, 0.5f);
    run (channel, impulse (10));
    channel.process (nullptr, 0);
    EXPECT_THAT (positionsAbove (run (channel, constant (40, 0.0f)), 0.0f), ElementsAre (34));
}
} // namespace
} // namespace cv::varlo
