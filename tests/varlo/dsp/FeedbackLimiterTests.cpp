#include "support/Signals.h"
#include "varlo/dsp/FeedbackLimiter.h"

#include <gmock/gmock.h>
#include <juce_dsp/juce_dsp.h>

namespace cv::varlo
{
namespace
{
using cv::test::constant;
using cv::test::firstDifference;
using cv::test::noise;

constexpr double rate = 44100.0;
constexpr int oneSecond = 44100;

/** +1 dB as a linear level: where the limiter sets in. */
const auto threshold = std::pow (10.0f, 0.05f);

FeedbackLimiter makeLimiter (double sampleRate = rate)
{
    FeedbackLimiter limiter;
    limiter.prepare (sampleRate);
    return limiter;
}

std::vector<float> run (FeedbackLimiter& limiter, std::vector<float> signal)
{
    for (auto& sample : signal)
        sample = limiter.envelope.process (Frame (sample), limiter.getCoefficients()).right();

    return signal;
}

TEST (FeedbackLimiter, GivesWhatJucesCompressorGives)
{
    juce::Random random (1);

    for (const auto sampleRate : { 8000.0, 22050.0, 44100.0, 48000.0, 96000.0, 192000.0 })
    {
        auto limiter = makeLimiter (sampleRate);
        juce::dsp::Compressor<float> compressor;
        compressor.setThreshold (1.0f);
        compressor.setAttack (5.0f);
        compressor.setRelease (50.0f);
        compressor.setRatio (100.0f);
        compressor.prepare ({ sampleRate, 512, 2 });

        for (int i = 0; i < 200000; ++i)
        {
            if (random.nextInt (10000) == 0)
            {
                limiter.clear();
                compressor.reset();
            }

            // Loud and quiet in turn, and silence, which is level with an empty envelope.
            const auto level = std::array { 0.0f, 0.3f, 1.5f, 20.0f }[(size_t) (i / 3000 % 4)];
            const Frame input (level * (2.0f * random.nextFloat() - 1.0f), level * (2.0f * random.nextFloat() - 1.0f));
            const auto output = limiter.envelope.process (input, limiter.getCoefficients());
            ASSERT_EQ (output.left(), compressor.processSample (0, input.left())) << sampleRate << ", sample " << i;
            ASSERT_EQ (output.right(), compressor.processSample (1, input.right())) << sampleRate << ", sample " << i;
        }
    }
}

TEST (FeedbackLimiter, SignalJustBelowOneDecibelPassesUnchanged)
{
    auto limiter = makeLimiter();
    const auto signal = constant (oneSecond, threshold * 0.999f);
    EXPECT_EQ (firstDifference (run (limiter, signal), signal), -1);
}

TEST (FeedbackLimiter, SteadyLevelOfTwoSettlesAt1Point1285)
{
    auto limiter = makeLimiter();
    const auto output = run (limiter, constant (oneSecond, 2.0f));
    EXPECT_NEAR (output.back(), 1.1285f, 0.0001f);
    EXPECT_NEAR (output.back(), threshold * std::pow (2.0f / threshold, 0.01f), 1.0e-5f);
}

TEST (FeedbackLimiter, FollowsInFiveMillisecondsAndLetsGoInFifty)
{
    // The envelope covers 1 - exp (-2 pi) of a step in one attack or release time: it starts at once,
    // and 5 ms after a step to 2.0 the gain is within half a percent of its end.
    auto limiter = makeLimiter();
    const auto attack = run (limiter, constant (oneSecond / 200, 2.0f));
    EXPECT_GT (attack[30], 1.5f);
    EXPECT_NEAR (attack.back(), 1.1285f, 0.006f);

    // On a step down to 0.5 the envelope decays as 0.5 + 1.5 exp (-2 pi t / 50 ms). It falls below the
    // threshold, where the gain becomes 1, after 50 ms / 2 pi * ln (1.5 / 0.622) = 7 ms.
    const auto release = run (limiter, constant (oneSecond / 100, 0.5f));
    EXPECT_LT (release[(size_t) (0.0065 * rate)], 0.49f);
    EXPECT_EQ (release[(size_t) (0.0075 * rate)], 0.5f);
}

TEST (FeedbackLimiter, ChannelsKeepApart)
{
    auto limiter = makeLimiter();
    auto alone = makeLimiter();
    const auto loud = noise (1000, 1, 8.0f);
    const auto signal = noise (1000, 2);
    const auto expected = run (alone, signal);

    for (size_t i = 0; i < signal.size(); ++i)
        ASSERT_EQ (limiter.envelope.process ({ loud[i], signal[i] }, limiter.getCoefficients()).right(), expected[i])
            << i;
}

TEST (FeedbackLimiter, ClearAndPrepareEmptyTheEnvelope)
{
    const auto signal = noise (1000, 3, 3.0f);

    for (const auto clearByPrepare : { false, true })
    {
        auto used = makeLimiter();
        auto fresh = makeLimiter();
        run (used, noise (1000, 4, 8.0f));

        if (clearByPrepare)
            used.prepare (rate);
        else
            used.clear();

        EXPECT_EQ (firstDifference (run (used, signal), run (fresh, signal)), -1) << clearByPrepare;
    }
}
} // namespace
} // namespace cv::varlo
