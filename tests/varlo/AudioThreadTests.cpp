#include "support/AudioThreadWatch.h"
#include "support/ProcessorHarness.h"
#include "support/Signals.h"

#include <gmock/gmock.h>

#include <mutex>

namespace cv::varlo
{
namespace
{
using cv::test::AudioThreadWatch;
using cv::test::FakePlayHead;
using cv::test::noise;
using cv::test::ProcessorHarness;
using cv::test::toBuffer;

constexpr int blockSize = 512;

/** Moves all parameters the way a host does before a block. */
void moveAllParameters (ProcessorHarness& harness, juce::Random& random)
{
    for (auto* parameter : harness.processor.getParameters())
        parameter->setValueNotifyingHost (random.nextFloat());
}

TEST (AudioThreadWatch, CountsWhatItIsMeantToCount)
{
    const auto countsDuring = [] (const std::function<void()>& work)
    {
        const AudioThreadWatch watch;
        work();
        return std::pair { watch.numAllocations(), watch.numLocks() };
    };

    std::mutex mutex;
    juce::AudioBuffer<float> buffer;
    std::vector<float> vector;

    EXPECT_EQ (countsDuring ([] {}), std::pair (0, 0));
    EXPECT_EQ (countsDuring ([&] { mutex.lock(); }), std::pair (0, 1));
    mutex.unlock();

    EXPECT_GT (countsDuring ([&] { buffer.setSize (2, 100); }).first, 0);
    EXPECT_GT (countsDuring ([&] { vector.resize (100); }).first, 0);
    EXPECT_GT (countsDuring ([&] { vector = std::vector<float>(); }).first, 0);
}

TEST (AudioThread, ProcessBlockAllocatesNothingAndLocksNothing)
{
    ProcessorHarness harness;
    harness.prepare (44100.0, blockSize);
    juce::MidiBuffer midi;
    juce::Random random (1);
    const auto input = toBuffer ({ noise (blockSize, 1, 4.0f), noise (blockSize, 2, 4.0f) });
    auto buffer = input;
    harness.processor.processBlock (buffer, midi); // makes room for the dry signal

    for (int block = 0; block < 500; ++block)
    {
        moveAllParameters (harness, random);
        harness.playHead.position = FakePlayHead::playingAt (block % 100 == 0 ? 0 : block * blockSize);
        buffer = input;

        const AudioThreadWatch watch;
        harness.processor.processBlock (buffer, midi);
        ASSERT_EQ (watch.numAllocations(), 0) << block;
        ASSERT_EQ (watch.numLocks(), 0) << block;
    }
}

TEST (AudioThread, OnlyALongerBlockThanAnyBeforeMakesRoomForTheDrySignal)
{
    ProcessorHarness harness;
    harness.prepare (44100.0, blockSize);
    juce::MidiBuffer midi;

    const auto allocationsOf = [&] (int numSamples)
    {
        juce::AudioBuffer<float> buffer (2, numSamples);
        const AudioThreadWatch watch;
        harness.processor.processBlock (buffer, midi);
        return watch.numAllocations();
    };

    EXPECT_GT (allocationsOf (blockSize), 0);
    EXPECT_EQ (allocationsOf (17), 0);
    EXPECT_EQ (allocationsOf (blockSize), 0);
    EXPECT_GT (allocationsOf (2 * blockSize), 0);
    EXPECT_EQ (allocationsOf (2 * blockSize), 0);
}

TEST (AudioThread, BypassedBlockAllocatesNothingAndLocksNothing)
{
    ProcessorHarness harness;
    harness.prepare (44100.0, blockSize);
    juce::MidiBuffer midi;
    juce::AudioBuffer<float> buffer (2, blockSize);

    const AudioThreadWatch watch;
    harness.processor.processBlockBypassed (buffer, midi);
    EXPECT_EQ (watch.numAllocations(), 0);
    EXPECT_EQ (watch.numLocks(), 0);
}
} // namespace
} // namespace cv::varlo
