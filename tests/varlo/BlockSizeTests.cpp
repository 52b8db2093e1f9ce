#include "support/ProcessorHarness.h"
#include "support/Signals.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::channelOf;
using cv::test::firstDifference;
using cv::test::noise;
using cv::test::ProcessorHarness;
using cv::test::toBuffer;

constexpr int numSamples = 3 * 44100;

juce::AudioBuffer<float> renderInBlocks (int numChannels, const std::function<int()>& nextBlockSize)
{
    // Every stage at work: a short delay with much feedback into the limiter, a hold, a resonance.
    ProcessorHarness harness (numChannels);
    harness.set ("delay", 37.0f);
    harness.set ("feedback", 95.0f);
    harness.set ("degrade", 40.0f);
    harness.set ("lowpass", 3000.0f);
    harness.set ("resonance", 60.0f);
    harness.prepare();

    std::vector<std::vector<float>> input;
    for (int channel = 0; channel < numChannels; ++channel)
        input.push_back (noise (numSamples, channel + 1, 1.5f));

    return harness.render (toBuffer (input), nextBlockSize);
}

class BlockSize : public testing::TestWithParam<int>
{
};

TEST_P (BlockSize, DoesNotChangeASingleBit)
{
    const auto numChannels = GetParam();
    const auto reference = renderInBlocks (numChannels, [] { return 512; });

    const auto expectSame = [&] (const char* cut, const std::function<int()>& nextBlockSize)
    {
        const auto output = renderInBlocks (numChannels, nextBlockSize);

        for (int channel = 0; channel < numChannels; ++channel)
            EXPECT_EQ (firstDifference (channelOf (output, channel), channelOf (reference, channel)), -1)
                << cut << ", channel " << channel;
    };

    expectSame ("blocks of 1", [] { return 1; });
    expectSame ("blocks of 17", [] { return 17; });
    expectSame ("blocks of 64", [] { return 64; });
    expectSame ("one block", [] { return numSamples; });

    juce::Random random (1234);
    expectSame ("changing blocks", [&random] { return random.nextInt (2000); });
}

INSTANTIATE_TEST_SUITE_P (MonoAndStereo, BlockSize, testing::Values (1, 2));
} // namespace
} // namespace cv::varlo
