#include "support/Signals.h"
#include "varlo/dsp/DelayEngine.h"

#include <gmock/gmock.h>

// Where and how fast the delay reads, heard through an open low-pass.

namespace cv::varlo
{
namespace
{
using cv::test::channelOf;
using cv::test::constant;
using cv::test::impulse;
using cv::test::sine;
using cv::test::toBuffer;

constexpr double rate = 44100.0;
constexpr int oneSecond = 44100;

/** An engine whose output is the delayed signal alone. */
class Delay
{
public:
    explicit Delay (float milliseconds, float feedbackPercent = 0.0f, double sampleRate = rate)
        : values { .mixPercent = 100.0f,
                   .degradePercent = 0.0f,
                   .delayMilliseconds = milliseconds,
                   .feedbackPercent = feedbackPercent,
                   .lowpassHz = 20000.0f,
                   .resonancePercent = 31.0f }
    {
        prepare (sampleRate);
    }

    void prepare (double sampleRate) { engine.prepare (sampleRate, values); }

    void glideTo (float milliseconds)
    {
        values.delayMilliseconds = milliseconds;
        engine.setParameters (values);
    }

    std::vector<float> run (const std::vector<float>& signal)
    {
        auto buffer = toBuffer ({ signal });
        engine.process (buffer);
        return channelOf (buffer, 0);
    }

    /** Where an impulse comes out, -1 when it doesn't within `numSamples`. */
    int findEcho (int numSamples) { return findStart (impulse (numSamples)); }

    /** Where the signal is first heard, -1 when it isn't. */
    int findStart (const std::vector<float>& signal)
    {
        const auto output = run (signal);
        const auto found = std::find_if (output.begin(), output.end(), [] (float sample) { return sample > 0.0f; });
        return found == output.end() ? -1 : (int) (found - output.begin());
    }

    ParameterValues values;
    DelayEngine engine;
};

/** Upward crossings of zero per second of `rate`, over a part of the signal. */
double frequencyOf (const std::vector<float>& signal, int begin, int end)
{
    int crossings = 0;

    for (int i = begin + 1; i < end; ++i)
        if (signal[(size_t) i - 1] < 0.0f && signal[(size_t) i] >= 0.0f)
            ++crossings;

    return crossings * rate / (end - begin);
}

TEST (DelayTime, OneMillisecondIs44SamplesAt44100Hz)
{
    EXPECT_EQ (Delay (1.0f).findEcho (1000), 44);
}

TEST (DelayTime, DelayOfZeroReturnsWhatWasJustWritten)
{
    EXPECT_EQ (Delay (0.0f).findEcho (1000), 0);
}

TEST (DelayTime, TenSecondsAreHeldExactly)
{
    for (const auto sampleRate : { 44100.0, 48000.0 })
    {
        const auto tenSeconds = (int) (10.0 * sampleRate);
        EXPECT_EQ (Delay (10000.0f, 0.0f, sampleRate).findEcho (tenSeconds + 1000), tenSeconds);
    }
}

TEST (DelayTime, LongerDelayIsLimitedToTenSeconds)
{
    EXPECT_EQ (Delay (11000.0f).findEcho (12 * oneSecond), 10 * oneSecond);
}

TEST (DelayTime, ShorterDelayGlidesForHalfASecondAndRaisesThePitch)
{
    // From 1 s to 0.1 s within 0.5 s the read position gains 0.9 s on the write: it moves at 2.8 times
    // the speed.
    Delay delay (1000.0f);
    delay.run (sine (2 * oneSecond, 441.0, rate));
    delay.glideTo (100.0f);

    const auto output = delay.run (sine (2 * oneSecond, 441.0, rate));
    EXPECT_NEAR (frequencyOf (output, 0, oneSecond / 2), 441.0 * 2.8, 5.0);
    EXPECT_NEAR (frequencyOf (output, oneSecond / 2 + 100, 2 * oneSecond), 441.0, 2.0);
}

TEST (DelayTime, LongerDelayLowersThePitch)
{
    // From 0.1 s to 0.5 s within 0.5 s the read position moves at a fifth of the speed: each sample is heard about
    // five times. A lower low-pass rounds these stairs, which ring about zero otherwise.
    Delay delay (100.0f);
    delay.values.lowpassHz = 1000.0f;
    delay.prepare (rate);
    delay.run (sine (2 * oneSecond, 441.0, rate));
    delay.glideTo (500.0f);

    const auto output = delay.run (sine (2 * oneSecond, 441.0, rate));
    EXPECT_NEAR (frequencyOf (output, 1000, oneSecond / 2), 441.0 * 0.2, 3.0);
    EXPECT_NEAR (frequencyOf (output, oneSecond / 2 + 1000, 2 * oneSecond), 441.0, 2.0);
}

TEST (DelayTime, NewTargetDuringAGlideStartsAFullGlideFromThere)
{
    // 0.25 s into the glide from 1 s to 0.1 s the delay stands at 0.55 s. The next glide, to 0.5 s,
    // takes half a second again, so its speed is 1.1 although the way is short.
    Delay delay (1000.0f);
    delay.run (sine (2 * oneSecond, 441.0, rate));
    delay.glideTo (100.0f);
    delay.run (sine (oneSecond / 4, 441.0, rate));
    delay.glideTo (500.0f);

    const auto output = delay.run (sine (oneSecond, 441.0, rate));
    EXPECT_NEAR (frequencyOf (output, 100, oneSecond / 2), 441.0 * 1.1, 6.0);
}

TEST (DelayTime, ChangeWithinTheToleranceIsNoNewTarget)
{
    // A step of one part in 2^24 is below the relative tolerance of single precision.
    Delay delay (1000.0f);
    delay.glideTo (500.0f);
    delay.run (constant (oneSecond / 4, 0.0f));
    delay.glideTo (std::nextafter (500.0f, 1000.0f));
    delay.run (constant (oneSecond / 4 + 1, 0.0f));

    // The glide ended after its half second: a new one would still be under way.
    EXPECT_EQ (delay.findEcho (oneSecond), oneSecond / 2);
}

TEST (DelayTime, ClearLeavesTheGlide)
{
    Delay delay (500.0f);
    delay.glideTo (100.0f);
    delay.run (constant (oneSecond / 4, 0.0f));
    delay.engine.clear();

    // Half way the delay stands at 0.3 s and shrinks by 0.8 samples per sample: what is written now is
    // read when 0.3 s - 0.8 t = t, after a sixth of a second.
    EXPECT_NEAR (delay.findStart (constant (oneSecond / 4, 1.0f)), oneSecond / 6, 3);
}

TEST (DelayTime, PrepareEmptiesTheMemoryAlsoAtTheSameRate)
{
    for (const auto newRate : { rate, 48000.0 })
    {
        Delay delay (100.0f, 90.0f);
        delay.run (constant (1000, 1.0f));
        delay.prepare (newRate);
        EXPECT_EQ (delay.findEcho (oneSecond), (int) (0.1 * newRate));
    }
}

TEST (DelayTime, SampleThatWaitsToBeFedBackSurvivesClearAndPrepare)
{
    for (const auto clearByPrepare : { false, true })
    {
        Delay delay (10.0f, 50.0f);
        delay.run (constant (442, 1.0f)); // ends with the echo's first sample, which waits to be fed back now

        if (clearByPrepare)
            delay.prepare (rate);
        else
            delay.engine.clear();

        const auto output = delay.run (constant (500, 0.0f));
        EXPECT_NE (output[441], 0.0f) << clearByPrepare;
    }
}

TEST (DelayTime, SecondEchoComesOneSampleLaterThanTwiceTheDelay)
{
    // What is fed back is written one sample after it was read.
    Delay delay (10.0f, 100.0f);
    auto once = Delay (10.0f);
    const auto all = delay.run (impulse (2000));
    const auto first = once.run (impulse (2000));
    const auto differs = std::mismatch (all.begin(), all.end(), first.begin()).first - all.begin();
    EXPECT_EQ (differs, 883);
}
} // namespace
} // namespace cv::varlo
