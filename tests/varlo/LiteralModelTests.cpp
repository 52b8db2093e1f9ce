#include "support/LiteralModel.h"
#include "support/ProcessorHarness.h"
#include "support/Signals.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::channelOf;
using cv::test::FakePlayHead;
using cv::test::firstDifference;
using cv::test::LiteralModel;
using cv::test::ProcessorHarness;
using cv::test::toBuffer;

/** A host gone wild: it moves parameters, cuts blocks, jumps about and prepares again, all from one
    seed, and holds the processor's output against the model's.
*/
class WildHost
{
public:
    WildHost (juce::int64 seed, double rate, int numChannels)
        : random (seed)
        , sampleRate (rate)
        , harness (numChannels)
        , channels ((size_t) numChannels)
    {
        prepare();
    }

    /** Plays one block; false when one of its samples differs in any bit. */
    bool playBlock (int blockIndex)
    {
        if (random.nextInt (400) == 0)
            prepare();

        moveParameters();
        makeInput (random.nextInt (20) == 0 ? random.nextInt (3000) : random.nextInt (600));
        const auto position = movePlayHead();

        const auto processed = harness.render (toBuffer (channels), [this] { return (int) channels[0].size(); });
        {
            const juce::ScopedNoDenormals noDenormals;
            model.process (channels, values(), position);
        }

        for (size_t c = 0; c < channels.size(); ++c)
        {
            const auto sample = firstDifference (channelOf (processed, (int) c), channels[c]);

            if (sample >= 0)
            {
                ADD_FAILURE() << "block " << blockIndex << ", channel " << c << ", sample " << sample << ": "
                              << processed.getSample ((int) c, sample) << " is not " << channels[c][(size_t) sample];
                return false;
            }
        }

        samplesPlayed += (juce::int64) channels[0].size();
        loudest = juce::jmax (loudest, processed.getMagnitude (0, processed.getNumSamples()));
        return true;
    }

    double secondsPlayed() const { return (double) samplesPlayed / sampleRate; }

    float loudestSample() const { return loudest; }

private:
    LiteralModel::Values values()
    {
        return { harness.parameter ("mix").get(),     harness.parameter ("degrade").get(),
                 harness.parameter ("delay").get(),   harness.parameter ("feedback").get(),
                 harness.parameter ("lowpass").get(), harness.parameter ("resonance").get() };
    }

    void prepare()
    {
        const auto blockSize = 32 << random.nextInt (6);
        harness.prepare (sampleRate, blockSize);

        const juce::ScopedNoDenormals noDenormals;
        model.prepare (sampleRate, blockSize, values());
    }

    void moveParameters()
    {
        // Long rests, so that ramps come to their ends; now and then one knob or all of them.
        const auto dice = random.nextInt (60);

        for (auto* parameter : harness.processor.getParameters())
            if (dice == 0 || (dice < 8 && random.nextInt (6) == 0))
                parameter->setValueNotifyingHost (random.nextInt (8) == 0 ? (float) random.nextInt (2)
                                                                          : random.nextFloat());
    }

    void makeInput (int numSamples)
    {
        if (random.nextInt (30) == 0)
            level = std::array { 0.0f, 0.1f, 1.0f, 6.0f }[(size_t) random.nextInt (4)];

        for (auto& channel : channels)
        {
            channel.resize ((size_t) numSamples);

            for (auto& sample : channel)
                sample = level * (2.0f * random.nextFloat() - 1.0f);
        }
    }

    std::optional<LiteralModel::Position> movePlayHead()
    {
        const auto numSamples = (juce::int64) channels[0].size();

        if (random.nextInt (150) == 0)
            time = random.nextInt (1 << 30);

        if (random.nextInt (50) == 0)
            time += random.nextInt (8192) - 4096;

        if (random.nextInt (100) == 0)
            looping = ! looping;

        if (random.nextInt (20) == 0)
        {
            harness.playHead.position = juce::nullopt;
            return {};
        }

        auto info = FakePlayHead::playingAt (time);
        info.setIsLooping (looping);
        harness.playHead.position = info;

        LiteralModel::Position position { time, 120.0, looping, false };
        time += numSamples;
        return position;
    }

    juce::Random random;
    const double sampleRate;
    ProcessorHarness harness;
    LiteralModel model;
    std::vector<std::vector<float>> channels;
    juce::int64 time = 0;
    bool looping = false;
    float level = 1.0f;
    juce::int64 samplesPlayed = 0;
    float loudest = 0.0f;
};

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
    WildHost host (seed, sampleRate, numChannels);

    for (int block = 0; host.secondsPlayed() < secondsToPlay; ++block)
        ASSERT_TRUE (host.playBlock (block));

    EXPECT_GT (host.loudestSample(), 0.5f);
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

TEST (LiteralModelChange, OfTheSampleRateAgreesToo)
{
    ProcessorHarness harness;
    LiteralModel model;
    juce::Random random (99);

    for (const auto sampleRate : { 44100.0, 48000.0, 32000.0, 32000.0, 96000.0 })
    {
        harness.prepare (sampleRate, 256);
        const LiteralModel::Values values { 50.0f, 0.0f, 1000.0f, 50.0f, 5000.0f, 0.0f };

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
