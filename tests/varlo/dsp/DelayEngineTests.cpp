#include "support/Signals.h"
#include "varlo/dsp/DelayEngine.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::channelOf;
using cv::test::constant;
using cv::test::firstDifference;
using cv::test::impulse;
using cv::test::noise;
using cv::test::peak;
using cv::test::sine;
using cv::test::toBuffer;

constexpr double rate = 44100.0;
constexpr int oneSecond = 44100;
constexpr int mixRampSamples = 220; // 5 ms, 220.5 samples, rounded down

constexpr ParameterValues defaults { .mixPercent = 50.0f,
                                     .degradePercent = 0.0f,
                                     .delayMilliseconds = 1000.0f,
                                     .feedbackPercent = 50.0f,
                                     .lowpassHz = 5000.0f,
                                     .resonancePercent = 0.0f };

ParameterValues with (float ParameterValues::*parameter, float value, ParameterValues values = defaults)
{
    values.*parameter = value;
    return values;
}

class DelayEngineTest : public testing::Test
{
protected:
    void prepare (const ParameterValues& values, double sampleRate = rate) { engine.prepare (sampleRate, values); }

    std::vector<float> run (const std::vector<float>& signal) { return runStereo (signal, signal).first; }

    std::pair<std::vector<float>, std::vector<float>> runStereo (const std::vector<float>& left,
                                                                 const std::vector<float>& right)
    {
        auto buffer = toBuffer ({ left, right });
        engine.process (buffer);
        return { channelOf (buffer, 0), channelOf (buffer, 1) };
    }

    DelayEngine engine;
};

TEST_F (DelayEngineTest, MixOfZeroIsTheDryInputAfterFiveMilliseconds)
{
    prepare (defaults);
    engine.setParameters (with (&ParameterValues::mixPercent, 0.0f));

    const auto signal = noise (oneSecond, 1);
    const auto output = run (signal);

    EXPECT_NE (output[mixRampSamples - 2], signal[mixRampSamples - 2]);
    for (size_t i = mixRampSamples - 1; i < output.size(); ++i)
        ASSERT_EQ (output[i], signal[i]) << i;
}

TEST_F (DelayEngineTest, MixOfHundredIsHeardOnlyThroughTheDelay)
{
    prepare (with (&ParameterValues::mixPercent, 100.0f));
    const auto output = run (constant (2 * oneSecond, 0.5f));

    EXPECT_EQ (peak (output, 0, oneSecond), 0.0f);
    EXPECT_NEAR (output[2 * oneSecond - 1], 0.5f, 0.001f);
}

TEST_F (DelayEngineTest, DelayGoesOnRunningUnheardAtMixZero)
{
    prepare (with (&ParameterValues::mixPercent, 0.0f));
    run (constant (oneSecond / 2, 0.5f));
    engine.setParameters (with (&ParameterValues::mixPercent, 100.0f));

    const auto output = run (constant (oneSecond, 0.0f));
    EXPECT_NEAR (output[oneSecond - 100], 0.5f, 0.001f);
}

TEST_F (DelayEngineTest, MixIsLinearInAmplitude)
{
    prepare (with (&ParameterValues::mixPercent, 25.0f));
    const auto output = run (constant (2 * oneSecond, 1.0f));

    EXPECT_FLOAT_EQ (output[oneSecond - 1], 0.75f);
    EXPECT_NEAR (output[2 * oneSecond - 1], 1.0f, 0.001f);
}

TEST_F (DelayEngineTest, FullFeedbackIsALoopGainOf092AfterOneSecond)
{
    // Half a second of a steady level settles in all filters, and at a cutoff of 100 Hz the ladder's
    // lift is below a thousandth: each repeat is the one before it times the loop gain.
    auto values = with (&ParameterValues::feedbackPercent, 0.0f);
    values.mixPercent = 100.0f;
    values.lowpassHz = 100.0f;
    prepare (values);
    engine.setParameters (with (&ParameterValues::feedbackPercent, 100.0f, values));

    run (constant (oneSecond, 0.0f));
    auto burst = constant (oneSecond * 4, 0.0f);
    std::fill (burst.begin(), burst.begin() + oneSecond / 2, 0.1f);
    const auto output = run (burst);

    const auto plateau = [&] (int echo) { return output[(size_t) (oneSecond * echo + oneSecond / 2 - 20)]; };
    EXPECT_NEAR (plateau (2) / plateau (1), 0.92f, 0.001f);
    EXPECT_NEAR (plateau (3) / plateau (2), 0.92f, 0.001f);
}

TEST_F (DelayEngineTest, WetOutputTakesTheRawReadAndOnlyRepeatsDarken)
{
    // With the wet low-pass wide open the first echo of a 3 kHz tone is as loud for a dark ladder as
    // for a bright one; the second isn't.
    const auto secondToFirst = [] (float lowpassHz)
    {
        DelayEngine fresh;
        auto values = with (&ParameterValues::mixPercent, 100.0f);
        values.delayMilliseconds = 100.0f;
        values.feedbackPercent = 100.0f;
        values.resonancePercent = 31.0f;
        values.lowpassHz = lowpassHz;
        fresh.prepare (rate, values);

        auto tone = sine (oneSecond / 20, 3000.0, rate, 0.5f);
        tone.resize (oneSecond);
        auto buffer = toBuffer ({ tone });
        fresh.process (buffer);
        const auto output = channelOf (buffer, 0);

        const auto echoPeak = [&] (int echo)
        { return peak (output, (size_t) (oneSecond / 10 * echo + 400), (size_t) (oneSecond / 10 * echo + 1800)); };
        return echoPeak (2) / echoPeak (1);
    };

    EXPECT_GT (secondToFirst (20000.0f), 0.9f);
    EXPECT_LT (secondToFirst (3000.0f), 0.3f);
}

TEST_F (DelayEngineTest, ResonanceAndDegradeStayOutOfTheLoop)
{
    // Both colour the way out only. When they return to rest, what the loop holds is the same as if
    // they had never moved.
    DelayEngine moved;
    DelayEngine rested;
    auto values = with (&ParameterValues::feedbackPercent, 90.0f);
    values.delayMilliseconds = 100.0f;
    moved.prepare (rate, values);
    rested.prepare (rate, values);

    auto coloured = values;
    coloured.resonancePercent = 100.0f;
    coloured.degradePercent = 80.0f;
    moved.setParameters (coloured);

    auto a = toBuffer ({ noise (oneSecond, 3, 0.2f) });
    auto b = a;
    moved.process (a);
    rested.process (b);
    EXPECT_GE (firstDifference (channelOf (a, 0), channelOf (b, 0)), 0);

    // The filter's own memory fades within a second; the loop's content is then heard through equal
    // filters.
    moved.setParameters (values);
    a.clear();
    b.clear();
    moved.process (a);
    rested.process (b);
    const auto tailA = channelOf (a, 0);
    const auto tailB = channelOf (b, 0);

    EXPECT_GT (peak (tailB, oneSecond / 2, oneSecond), 0.001f);
    for (size_t i = oneSecond / 2; i < oneSecond; ++i)
        ASSERT_NEAR (tailA[i], tailB[i], 1.0e-6f) << i;
}

TEST_F (DelayEngineTest, ChannelsDoNotMeet)
{
    auto values = with (&ParameterValues::feedbackPercent, 90.0f);
    values.degradePercent = 50.0f;
    values.delayMilliseconds = 50.0f;
    prepare (values);
    const auto [left, right] = runStereo (noise (oneSecond, 4, 2.0f), constant (oneSecond, 0.0f));

    EXPECT_GT (peak (left, 0, left.size()), 0.5f);
    EXPECT_EQ (peak (right, 0, right.size()), 0.0f);
}

TEST_F (DelayEngineTest, MonoRunsTheFirstChannelAlone)
{
    prepare (defaults);
    DelayEngine mono;
    mono.prepare (rate, defaults);

    const auto signal = noise (2 * oneSecond, 5);
    auto buffer = toBuffer ({ signal });
    mono.process (buffer);
    EXPECT_EQ (firstDifference (channelOf (buffer, 0), run (signal)), -1);
}

TEST_F (DelayEngineTest, LoudLoopIsHeldDown)
{
    // 0.5 in at the loop gain of 0.92 would settle at 6.6 with the ladder's lift; behind the limiter it
    // can't pass 0.5 + 0.92 * 1.14.
    auto values = with (&ParameterValues::feedbackPercent, 100.0f);
    values.mixPercent = 100.0f;
    values.delayMilliseconds = 10.0f;
    prepare (values);
    const auto output = run (constant (5 * oneSecond, 0.5f));

    EXPECT_GT (output.back(), 1.4f);
    EXPECT_LT (output.back(), 0.5f + 0.92f * 1.14f);
}

TEST_F (DelayEngineTest, OutputStaysWithinFour)
{
    prepare (with (&ParameterValues::mixPercent, 0.0f));
    const auto [left, right] = runStereo (constant (100, 5.0f), constant (100, -5.0f));
    EXPECT_EQ (left[50], 4.0f);
    EXPECT_EQ (right[50], -4.0f);
}

TEST_F (DelayEngineTest, NotANumberLeavesAsSilenceAndStaysInTheLoopUntilItIsCleared)
{
    const auto values = with (&ParameterValues::delayMilliseconds, 10.0f);

    for (const auto clearByPrepare : { false, true })
    {
        DelayEngine fresh;
        fresh.prepare (rate, values);
        const auto runFresh = [&fresh] (const std::vector<float>& input)
        {
            auto buffer = toBuffer ({ input, input });
            fresh.process (buffer);
            return channelOf (buffer, 1);
        };

        auto signal = noise (oneSecond, 6, 0.5f);
        signal[0] = std::numeric_limits<float>::quiet_NaN();
        const auto output = runFresh (signal);

        EXPECT_EQ (output[0], 0.0f);
        EXPECT_EQ (output[1], 0.5f * signal[1]);
        EXPECT_EQ (peak (output, 442, output.size()), 0.0f);

        // Neither the sample that waited to be fed back nor the wet filter brings it back.
        if (clearByPrepare)
            fresh.prepare (rate, values);
        else
            fresh.clear();

        const auto after = runFresh (noise (oneSecond, 7, 0.5f));
        EXPECT_GT (peak (after, 0, 441), 0.2f);
        EXPECT_GT (peak (after, oneSecond / 2, oneSecond), 0.2f);
    }
}

TEST_F (DelayEngineTest, InfinityBehavesAsNotANumber)
{
    prepare (defaults);
    const auto output = run ({ std::numeric_limits<float>::infinity(), -std::numeric_limits<float>::infinity() });
    EXPECT_EQ (output, (std::vector<float> { 0.0f, 0.0f }));
}

TEST_F (DelayEngineTest, ClearSilencesEchoesButKeepsRampsAndHeldSamples)
{
    auto values = with (&ParameterValues::delayMilliseconds, 100.0f);
    values.mixPercent = 100.0f;
    values.feedbackPercent = 0.0f;
    prepare (values);
    run (noise (oneSecond, 8));
    engine.clear();
    const auto silent = run (constant (oneSecond, 0.0f));
    EXPECT_EQ (peak (silent, 0, silent.size()), 0.0f);

    // Degrade at full holds 441 samples: the value captured before the clear is heard on after it.
    values.degradePercent = 100.0f;
    values.delayMilliseconds = 1.0f;
    prepare (values);
    run (constant (oneSecond + 100, 0.5f));
    engine.clear();
    const auto held = run (constant (100, 0.0f));
    EXPECT_GT (peak (held, 0, 100), 0.1f);
}

TEST_F (DelayEngineTest, RepeatedPrepareKeepsTheWetFilterAndEmptiesTheLines)
{
    auto values = with (&ParameterValues::delayMilliseconds, 100.0f);
    values.mixPercent = 100.0f;
    values.feedbackPercent = 0.0f;
    prepare (values);
    run (constant (oneSecond, 0.5f));
    prepare (values);

    // The filter lets its memory go within a few milliseconds; no echo of the lines follows.
    const auto output = run (constant (oneSecond, 0.0f));
    EXPECT_GT (output[0], 0.1f);
    EXPECT_LT (peak (output, oneSecond / 20, output.size()), 1.0e-4f);
}

TEST_F (DelayEngineTest, NewSampleRateKeepsTheDelayInSeconds)
{
    auto values = with (&ParameterValues::mixPercent, 100.0f);
    values.lowpassHz = 20000.0f;
    values.resonancePercent = 31.0f;
    prepare (values);
    run (noise (oneSecond, 9));

    prepare (values, 96000.0);
    const auto output = run (impulse (96100));
    EXPECT_EQ (peak (output, 0, 96000), 0.0f);
    EXPECT_GT (peak (output, 96000, 96010), 0.3f);
}

TEST_F (DelayEngineTest, ChangeToMonoAndBackLeavesTheSecondChannelWhereItWas)
{
    // A full Degrade holds its value for 441 samples: the second channel's counter waits while mono.
    auto values = with (&ParameterValues::degradePercent, 100.0f);
    values.mixPercent = 100.0f;
    values.delayMilliseconds = 1.0f;
    values.feedbackPercent = 0.0f;
    prepare (values);
    runStereo (constant (144, 1.0f), constant (144, 1.0f));
    prepare (values);
    const auto before = runStereo (constant (100, 0.5f), constant (100, 0.5f));

    prepare (values);
    auto mono = toBuffer ({ noise (5000, 12) });
    engine.process (mono);

    prepare (values);
    const auto after = runStereo (constant (10, 0.0f), constant (10, 0.0f));
    EXPECT_NE (after.first[0], after.second[0]);
    EXPECT_NEAR (after.second[0], before.second[99], 0.01f);
}

TEST_F (DelayEngineTest, OfFurtherChannelsOnlyTheDrySignalIsLeft)
{
    auto values = with (&ParameterValues::delayMilliseconds, 1.0f);
    values.mixPercent = 25.0f;
    prepare (values);
    auto buffer = toBuffer ({ noise (1000, 13), noise (1000, 14), noise (1000, 15, 8.0f) });
    const auto input = buffer;
    engine.process (buffer);

    for (int channel = 0; channel < 3; ++channel)
        for (int i = 0; i < 1000; ++i)
            ASSERT_EQ (buffer.getSample (channel, i), juce::jlimit (-4.0f, 4.0f, 0.75f * input.getSample (channel, i)))
                << channel << ", " << i;
}

TEST_F (DelayEngineTest, BufferWithoutChannelsOrSamplesIsLeftAlone)
{
    prepare (defaults);
    juce::AudioBuffer<float> none;
    engine.process (none);
    juce::AudioBuffer<float> noSamples (2, 0);
    engine.process (noSamples);
}

TEST_F (DelayEngineTest, BlockThatIsFlaggedClearIsSilence)
{
    prepare (defaults);
    DelayEngine other;
    other.prepare (rate, defaults);

    auto signal = toBuffer ({ noise (oneSecond, 10), noise (oneSecond, 11) });
    auto sameSignal = signal;
    engine.process (signal);
    other.process (sameSignal);

    juce::AudioBuffer<float> flagged (2, oneSecond);
    flagged.clear();
    auto zeros = toBuffer ({ constant (oneSecond, 0.0f), constant (oneSecond, 0.0f) });
    engine.process (flagged);
    other.process (zeros);

    EXPECT_GT (flagged.getMagnitude (0, oneSecond), 0.1f);
    EXPECT_EQ (channelOf (flagged, 0), channelOf (zeros, 0));
}
} // namespace
} // namespace cv::varlo
