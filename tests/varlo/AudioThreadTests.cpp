#include "support/GuardedProcessor.h"
#include "support/ProcessorHarness.h"
#include "support/Signals.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

namespace cv::varlo
{
namespace
{
using cv::test::FakePlayHead;
using cv::test::GuardedProcessor;
using cv::test::makeNoise;
using cv::test::makeSilence;
using cv::test::ProcessorHarness;

constexpr int blockSize = 512;

/** Moves all parameters the way a host does before a block. */
void moveAllParameters (ProcessorHarness& harness, juce::Random& random)
{
    for (auto* parameter : harness.processor.getParameters())
        parameter->setValueNotifyingHost (random.nextFloat());
}

/** Anything from no sample to several thousand, short ones as often as long ones. */
int randomBlockSize (juce::Random& random)
{
    const auto limit = 1 << random.nextInt (14);
    return random.nextInt (limit);
}

void runUnderGuard (int numChannels, double seconds)
{
    ProcessorHarness harness (numChannels);
    GuardedProcessor guarded (harness.processor);
    juce::Random random (numChannels);
    const auto input = makeNoise (numChannels, 8192, 4.0f);
    juce::int64 time = 0;
    auto numWakings = 0;

    for (const auto sampleRate : { 44100.0, 96000.0, 8000.0, 192000.0 })
    {
        harness.prepare (sampleRate, blockSize);

        for (int done = 0; done < (int) (seconds * sampleRate / 4.0);)
        {
            const auto numSamples = randomBlockSize (random);
            juce::AudioBuffer<float> buffer (numChannels, numSamples);

            for (int channel = 0; channel < numChannels; ++channel)
                buffer.copyFrom (channel, 0, input, channel, 0, numSamples);

            moveAllParameters (harness, random);
            time = random.nextInt (50) == 0 ? 0 : time + numSamples;
            harness.playHead.position = FakePlayHead::playingAt (time);

            guarded.processBlock (buffer);
            ASSERT_FALSE (testing::Test::HasFailure()) << sampleRate << ' ' << done << ' ' << numSamples;
            numWakings += guarded.hasWokenAnalysis() ? 1 : 0;
            done += numSamples;
        }
    }

    EXPECT_GT (numWakings, 1);
}

TEST (AudioThread, StereoKeepsToItsRulesForAMinute)
{
    runUnderGuard (2, 60.0);
}

TEST (AudioThread, MonoKeepsToItsRules)
{
    runUnderGuard (1, 10.0);
}

TEST (AudioThread, BlockLongerThanPromisedKeepsToTheRulesToo)
{
    ProcessorHarness harness;
    GuardedProcessor guarded (harness.processor);
    harness.prepare (44100.0, blockSize);

    for (const auto numSamples : { blockSize, 2 * blockSize, 100 * blockSize })
    {
        auto buffer = makeNoise (2, numSamples, 1.0f);
        guarded.processBlock (buffer);
    }
}

TEST (AudioThread, BypassedBlockKeepsToTheRulesWithoutException)
{
    ProcessorHarness harness;
    GuardedProcessor guarded (harness.processor);
    harness.prepare (44100.0, blockSize);

    auto buffer = makeNoise (2, blockSize, 1.0f);
    guarded.processBlockBypassed (buffer);
}

TEST (AudioThread, OnlyWakesTheAnalysisWhenThereIsEnoughForAFrame)
{
    ProcessorHarness harness;
    GuardedProcessor guarded (harness.processor);
    harness.prepare (44100.0, blockSize);
    ASSERT_TRUE (harness.processor.getFFTProcessor().stopThread (10000)); // takes nothing from the queue

    const auto wakesFor = [&] (int numSamples)
    {
        auto buffer = makeSilence (2, numSamples);
        guarded.processBlock (buffer);
        return guarded.hasWokenAnalysis();
    };

    EXPECT_FALSE (wakesFor (500));
    EXPECT_FALSE (wakesFor (11));
    EXPECT_FALSE (wakesFor (0));
    EXPECT_TRUE (wakesFor (1));
    EXPECT_TRUE (wakesFor (1));

    std::array<float, 512> taken {};
    ASSERT_TRUE (harness.processor.getFFTProcessor().audioFifo.pop (taken.data(), 512));
    EXPECT_FALSE (wakesFor (510));
    EXPECT_TRUE (wakesFor (1000));
}

/** A host's play head that does what it should not. */
class AllocatingPlayHead final : public juce::AudioPlayHead
{
public:
    explicit AllocatingPlayHead (size_t bytesToAllocate) : numBytes (bytesToAllocate) {}

    juce::Optional<PositionInfo> getPosition() const override
    {
        void* volatile memory = std::malloc (numBytes);
        std::free (memory);
        return {};
    }

private:
    const size_t numBytes;
};

/** A host's play head that does nothing but lock. */
class LockingPlayHead final : public juce::AudioPlayHead
{
public:
    explicit LockingPlayHead (const FFTProcessor* processorToWake) : processor (processorToWake) {}

    juce::Optional<PositionInfo> getPosition() const override
    {
        if (processor != nullptr)
            processor->notify();
        else
            event.signal();

        return {};
    }

private:
    const FFTProcessor* const processor;
    const juce::WaitableEvent event;
};

int numFailuresOf (const std::function<void()>& work)
{
    testing::TestPartResultArray results;
    {
        const testing::ScopedFakeTestPartResultReporter reporter (
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &results);
        work();
    }
    return results.size();
}

TEST (AudioThread, GuardAcceptsNoAllocation)
{
    ProcessorHarness harness;
    GuardedProcessor guarded (harness.processor);
    harness.prepare (44100.0, blockSize);
    AllocatingPlayHead playHead (64);
    harness.processor.setPlayHead (&playHead);
    auto buffer = makeSilence (2, blockSize);

    EXPECT_EQ (numFailuresOf ([&] { guarded.processBlock (buffer); }), 2); // and its release
}

TEST (AudioThread, GuardAcceptsOneWakingAndNoOtherLock)
{
    const auto numFailuresWith = [] (bool wakesAnalysis, int numSamples)
    {
        ProcessorHarness harness;
        GuardedProcessor guarded (harness.processor);
        harness.prepare (44100.0, blockSize);
        LockingPlayHead playHead (wakesAnalysis ? &harness.processor.getFFTProcessor() : nullptr);
        harness.processor.setPlayHead (&playHead);
        return numFailuresOf (
            [&]
            {
                auto buffer = makeSilence (2, numSamples);
                guarded.processBlock (buffer);
            });
    };

    EXPECT_EQ (numFailuresWith (false, 512), 1); // another event
    EXPECT_EQ (numFailuresWith (true, 512), 1);  // twice
    EXPECT_EQ (numFailuresWith (true, 511), 1);  // too early
}
} // namespace
} // namespace cv::varlo
