#include "support/ProcessorHarness.h"
#include "support/Signals.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::areIdentical;
using cv::test::makeNoise;
using cv::test::makeSilence;
using cv::test::ProcessorHarness;

constexpr auto sampleRateHz = 48000.0;
constexpr auto oneSecond = 48000;

/** The plug-in lets nothing louder through. */
constexpr auto maxLevel = 4.0f;

/** Every stage at work, and much feedback. */
void turnKnobs (ProcessorHarness& harness)
{
    harness.set ("delay", 37.0f);
    harness.set ("feedback", 95.0f);
    harness.set ("degrade", 40.0f);
    harness.set ("resonance", 60.0f);
}

void expectSound (const juce::AudioBuffer<float>& buffer)
{
    auto numBad = 0;

    for (auto channel = 0; channel < buffer.getNumChannels(); ++channel)
        for (auto i = 0; i < buffer.getNumSamples(); ++i)
            numBad += std::abs (buffer.getSample (channel, i)) <= maxLevel ? 0 : 1;

    EXPECT_EQ (numBad, 0);
    EXPECT_GT (buffer.getMagnitude (0, buffer.getNumSamples()), 0.01f);
}

TEST (HostHabits, PreparingTwiceOrForNoSamplesIsPreparingOnce)
{
    const auto input = makeNoise (2, oneSecond, 0.5f);
    ProcessorHarness once;
    turnKnobs (once);
    once.prepare (sampleRateHz, 512);
    const auto expected = once.render (input);

    for (const auto secondLength : { 512, 0, -1, 1 })
    {
        ProcessorHarness twice;
        turnKnobs (twice);
        twice.prepare (sampleRateHz, 512);
        twice.prepare (sampleRateHz, secondLength);
        EXPECT_TRUE (areIdentical (twice.render (input), expected)) << secondLength;
    }
}

TEST (HostHabits, RatesChangeWhileEchoesSound)
{
    ProcessorHarness harness;
    turnKnobs (harness);

    for (const auto rate : { 48000.0, 192000.0, 8000.0, 44100.0, 768000.0, 48000.0 })
    {
        harness.prepare (rate, 512);
        expectSound (harness.render (makeNoise (2, oneSecond, 2.0f)));
    }
}

TEST (HostHabits, EchoComesInTimeAfterANewRate)
{
    ProcessorHarness harness;
    harness.set ("delay", 100.0f);
    harness.set ("feedback", 0.0f);
    harness.set ("mix", 100.0f);
    harness.prepare (96000.0, 512);
    harness.render (makeNoise (2, oneSecond, 0.5f));
    harness.prepare (sampleRateHz, 512);

    // What sounded before has left the line, and the time has settled.
    harness.render (makeSilence (2, 5 * oneSecond));
    auto impulse = makeSilence (2, oneSecond);
    impulse.setSample (0, 0, 1.0f);
    const auto output = harness.render (impulse);
    constexpr auto echoStart = 4800;
    EXPECT_LT (output.getMagnitude (0, 0, echoStart - 1), 1.0e-3f);
    EXPECT_GT (output.getMagnitude (0, echoStart - 1, 100), 0.01f);
}

TEST (HostHabits, BlocksLargerThanPromisedSoundLikeThosePromised)
{
    const auto input = makeNoise (2, oneSecond, 0.5f);
    ProcessorHarness honest;
    turnKnobs (honest);
    honest.prepare (sampleRateHz, oneSecond);
    const auto expected = honest.render (input, oneSecond);

    ProcessorHarness dishonest;
    turnKnobs (dishonest);
    dishonest.prepare (sampleRateHz, 1);
    EXPECT_TRUE (areIdentical (dishonest.render (input, oneSecond), expected));
}

TEST (HostHabits, ChannelsMayShareTheirMemory)
{
    constexpr auto blockLength = 512;
    ProcessorHarness harness;
    turnKnobs (harness);
    harness.prepare (sampleRateHz, blockLength);
    auto input = makeNoise (1, oneSecond, 0.5f);
    juce::MidiBuffer midi;

    for (auto start = 0; start + blockLength <= oneSecond; start += blockLength)
    {
        auto* const samples = input.getWritePointer (0, start);
        float* const channels[] { samples, samples };
        juce::AudioBuffer<float> block (channels, 2, blockLength);
        harness.processor.processBlock (block, midi);
    }

    expectSound (input);
}

TEST (HostHabits, StateBeforePrepareHoldsFromTheFirstSample)
{
    ProcessorHarness source;
    turnKnobs (source);
    juce::MemoryBlock state;
    source.processor.getStateInformation (state);
    source.prepare (sampleRateHz, 512);
    const auto input = makeNoise (2, oneSecond, 0.5f);

    ProcessorHarness restored;
    restored.processor.setStateInformation (state.getData(), (int) state.getSize());
    restored.prepare (sampleRateHz, 512);
    EXPECT_TRUE (areIdentical (restored.render (input), source.render (input)));
}

TEST (HostHabits, StateAThousandTimesASecondLeavesTheSoundAlone)
{
    constexpr auto samplesPerMillisecond = 48;
    const auto input = makeNoise (2, 2 * oneSecond, 0.5f);
    ProcessorHarness calm;
    turnKnobs (calm);
    calm.prepare (sampleRateHz, samplesPerMillisecond);
    const auto expected = calm.render (input);

    ProcessorHarness disturbed;
    turnKnobs (disturbed);
    disturbed.prepare (sampleRateHz, samplesPerMillisecond);
    juce::MemoryBlock state;
    disturbed.processor.getStateInformation (state);
    auto numRestored = 0;

    const auto output =
        disturbed.render (input,
                          [&]
                          {
                              disturbed.processor.setStateInformation (state.getData(), (int) state.getSize());
                              ++numRestored;
                              return samplesPerMillisecond;
                          });

    EXPECT_EQ (numRestored, 2000);
    EXPECT_TRUE (areIdentical (output, expected));
}

/** Asks, as part of the block, how the processor has set this thread's arithmetic up. */
class ArithmeticProbe final : public juce::AudioPlayHead
{
public:
    juce::Optional<PositionInfo> getPosition() const override
    {
        numFlushing += juce::FloatVectorOperations::areDenormalsDisabled() ? 1 : 0;
        ++numBlocks;
        return {};
    }

    mutable int numFlushing = 0;
    mutable int numBlocks = 0;
};

// Numbers this small take a processor up to a hundred times as long. A loop that dies away is full of them unless
// they count as 0, and a count of them is the same on a busy machine, which a time is not.
TEST (HostHabits, SilenceBehindABurstHoldsNoTinyNumbers)
{
    constexpr auto blockLength = 64;
    ProcessorHarness harness;
    harness.set ("delay", 10.0f);
    harness.set ("feedback", 50.0f);
    harness.set ("mix", 50.0f);
    harness.prepare (sampleRateHz, blockLength);
    ArithmeticProbe probe;
    harness.processor.setPlayHead (&probe);
    harness.render (makeNoise (2, oneSecond, 1.0f), blockLength);

    auto numTiny = 0;
    auto loudestAtTheEnd = 1.0f;

    for (auto second = 0; second < 60; ++second)
    {
        const auto output = harness.render (makeSilence (2, oneSecond), blockLength);
        loudestAtTheEnd = output.getMagnitude (0, oneSecond);

        for (auto channel = 0; channel < 2; ++channel)
            for (auto i = 0; i < oneSecond; ++i)
                numTiny += std::fpclassify (output.getSample (channel, i)) == FP_SUBNORMAL ? 1 : 0;
    }

    EXPECT_EQ (numTiny, 0);
    EXPECT_LT (loudestAtTheEnd, 1.0e-30f); // so that there was a chance of them
    EXPECT_EQ (probe.numBlocks, 61 * oneSecond / blockLength);
    EXPECT_EQ (probe.numFlushing, probe.numBlocks);
    EXPECT_FALSE (juce::FloatVectorOperations::areDenormalsDisabled()); // the host's setting is back
}
} // namespace
} // namespace cv::varlo
