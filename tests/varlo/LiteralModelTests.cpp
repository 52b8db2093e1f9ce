#include "support/Signals.h"
#include "support/WildHost.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::channelOf;
using cv::test::firstDifference;
using cv::test::LiteralModel;
using cv::test::ProcessorHarness;
using cv::test::Situation;
using cv::test::toBuffer;
using cv::test::WildHost;

struct Scenario
{
    juce::int64 seed;
    double sampleRate;
    int numChannels;
};

/** What CTest and a failure show of a scenario. */
void PrintTo (const Scenario& scenario, std::ostream* out)
{
    *out << "seed " << scenario.seed;
}

std::string nameOf (const testing::TestParamInfo<Scenario>& info)
{
    return std::to_string ((int) info.param.sampleRate) + (info.param.numChannels == 1 ? "HzMono" : "HzStereo");
}

class LiteralModelTest : public testing::TestWithParam<Scenario>
{
};

TEST_P (LiteralModelTest, AgreesWithTheProcessorInEveryBit)
{
    constexpr auto secondsToPlay = 30.0;
    const auto [seed, sampleRate, numChannels] = GetParam();
    WildHost host (seed, { .sampleRate = sampleRate, .numChannels = numChannels });

    for (int block = 0; host.getSecondsPlayed() < secondsToPlay; ++block)
        ASSERT_TRUE (host.playBlock (block));

    EXPECT_GT (host.getLoudestSample(), 0.5f);
}

INSTANTIATE_TEST_SUITE_P (SeededMinutes,
                          LiteralModelTest,
                          testing::Values (Scenario { 1, 22050.0, 2 },
                                           Scenario { 2, 32000.0, 2 },
                                           Scenario { 3, 44100.0, 2 },
                                           Scenario { 4, 44100.0, 1 },
                                           Scenario { 5, 48000.0, 2 },
                                           Scenario { 6, 48000.0, 1 },
                                           Scenario { 7, 96000.0, 2 },
                                           Scenario { 8, 192000.0, 1 }),
                          nameOf);

/** Short runs: each situation in several rates and layouts, in Live and elsewhere, with prepares that change both. */
class LiteralModelSituation : public testing::TestWithParam<int>
{
};

TEST_P (LiteralModelSituation, AgreesWithTheProcessorInEveryBit)
{
    constexpr std::array rates { 44100.0, 48000.0, 96000.0, 32000.0, 11025.0, 192000.0 };
    constexpr std::array situations { Situation::wild,     Situation::rest,       Situation::shortDelay,
                                      Situation::coloured, Situation::lowpass,    Situation::gliding,
                                      Situation::loud,     Situation::everything, Situation::degradeMoves };
    constexpr auto secondsToPlay = 6.0;
    constexpr auto blocksToPlay = 500;

    const auto run = GetParam();
    const auto situation = situations[(size_t) run % situations.size()];
    WildHost host (1000 + run, { .sampleRate = rates[(size_t) run % rates.size()],
                                 .numChannels = 1 + run / 2 % 2,
                                 .situation = situation,
                                 .isLive = run % 5 < 2,
                                 .changesRateAndLayout = run % 4 == 3 });

    for (int block = 0; block < blocksToPlay || host.getSecondsPlayed() < secondsToPlay; ++block)
        ASSERT_TRUE (host.playBlock (block));

    EXPECT_GT (host.getLoudestSample(), 0.1f);
    EXPECT_GT (host.getNumJumps(), 0);
}

INSTANTIATE_TEST_SUITE_P (ShortRuns, LiteralModelSituation, testing::Range (0, 54));

TEST (LiteralModelChange, OfTheSampleRateAgreesToo)
{
    ProcessorHarness harness;
    LiteralModel model;
    juce::Random random (99);

    for (const auto sampleRate : { 44100.0, 48000.0, 32000.0, 32000.0, 96000.0 })
    {
        harness.prepare (sampleRate, 256);
        const LiteralModel::Values values { .mixPercent = 50.0f,
                                            .degradePercent = 0.0f,
                                            .delayMilliseconds = 1000.0f,
                                            .feedbackPercent = 50.0f,
                                            .lowpassHz = 5000.0f,
                                            .resonancePercent = 0.0f };

        const juce::ScopedNoDenormals noDenormals;
        model.prepare (sampleRate, 256, values);

        for (int block = 0; block < 500; ++block)
        {
            std::vector<std::vector<float>> channels (2, std::vector<float> (256));
            for (auto& channel : channels)
                for (auto& sample : channel)
                    sample = 2.0f * random.nextFloat() - 1.0f;

            const auto processed = harness.render (toBuffer (channels), 256);
            model.process (channels, values, {});
            ASSERT_EQ (firstDifference (channelOf (processed, 0), channels[0]), -1)
                << sampleRate << ", block " << block;
            ASSERT_EQ (firstDifference (channelOf (processed, 1), channels[1]), -1)
                << sampleRate << ", block " << block;
        }
    }
}
} // namespace
} // namespace cv::varlo
