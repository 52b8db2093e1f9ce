#include "varlo/spectrum/FFTProcessor.h"

#include "support/MessageLoop.h"
#include "support/Signals.h"
#include "support/ThreadPriority.h"

#include <gtest/gtest.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <memory>
#include <pthread.h>
#include <thread>
#include <unistd.h>

namespace cv::varlo
{
namespace
{
using cv::test::getStartPriority;
using cv::test::noise;
using cv::test::runMessageLoopFor;
using cv::test::sine;

void pushMono (FFTProcessor& processor, const float* samples, int numSamples)
{
    juce::AudioBuffer<float> buffer (1, numSamples);
    buffer.copyFrom (0, 0, samples, numSamples);
    processor.pushAudio (buffer);
}

constexpr int hopSamples = 512;
constexpr int numBins = FFTProcessor::numBins;
constexpr int timeoutMilliseconds = 20000;

using Frame = std::vector<float>;

bool waitUntil (const std::function<bool()>& condition)
{
    const auto start = juce::Time::getMillisecondCounterHiRes();

    while (! condition())
    {
        if (juce::Time::getMillisecondCounterHiRes() - start > timeoutMilliseconds)
            return false;

        juce::Thread::sleep (1);
    }

    return true;
}

/** Pushes a signal hop by hop, none before the thread has taken the one before. */
void pushCalmly (FFTProcessor& processor, const std::vector<float>& signal)
{
    for (size_t start = 0; start < signal.size(); start += hopSamples)
    {
        const auto count = juce::jmin (signal.size() - start, (size_t) hopSamples);
        pushMono (processor, signal.data() + start, (int) count);
        ASSERT_TRUE (waitUntil ([&] { return processor.audioFifo.getNumReady() < hopSamples; }));
    }
}

std::vector<Frame> popFrames (FFTProcessor& processor)
{
    std::vector<Frame> frames;
    Frame frame ((size_t) numBins);

    while (processor.spectrumFifo.pop (frame.data(), numBins))
        frames.push_back (frame);

    return frames;
}

/** What comes out of a signal, and no more of it will. */
std::vector<Frame> framesOf (FFTProcessor& processor, const std::vector<float>& signal)
{
    pushCalmly (processor, signal);
    EXPECT_TRUE (processor.stopThread (timeoutMilliseconds)); // ends what it is at first
    return popFrames (processor);
}

/** The same without threads and queues. */
std::vector<Frame> expectedFramesOf (const std::vector<float>& signal)
{
    SpectrumAnalyser analyser;
    std::vector<Frame> frames;

    for (size_t start = 0; start + hopSamples <= signal.size(); start += hopSamples)
    {
        const auto* magnitudes = analyser.analyse (signal.data() + start);
        frames.emplace_back (magnitudes, magnitudes + numBins);
    }

    return frames;
}

TEST (FFTProcessor, ThreadRunsFromConstruction)
{
    const FFTProcessor processor;
    EXPECT_TRUE (processor.isThreadRunning());
    EXPECT_EQ (processor.getThreadName(), "fft");
    EXPECT_EQ (getStartPriority (processor).value_or (juce::Thread::Priority::highest),
               juce::Thread::Priority::highest);
    EXPECT_EQ (processor.sampleRate.load(), 44100.0);
    EXPECT_EQ (processor.numBins, 513);
}

/** Keeps a thread from going on, as a machine does that has no time for it, until it is released. One at a time. */
class StarvedThread
{
public:
    explicit StarvedThread (const juce::Thread& thread)
    {
        EXPECT_EQ (pipe (ends), 0);
        isHeld = false;
        formerHandler = std::signal (SIGUSR2, [] (int) { hold(); });
        EXPECT_EQ (pthread_kill ((pthread_t) thread.getThreadId(), SIGUSR2), 0);
        EXPECT_TRUE (waitUntil ([] { return isHeld.load(); }));
    }

    ~StarvedThread()
    {
        std::signal (SIGUSR2, formerHandler);
        close (ends[0]);
    }

    void release() { close (ends[1]); }

private:
    static void hold()
    {
        isHeld = true;

        for (char byte = 0; read (ends[0], &byte, 1) < 0 && errno == EINTR;)
        {
        }
    }

    static inline int ends[2] {};
    static inline std::atomic<bool> isHeld { false };
    void (*formerHandler) (int) = nullptr;
};

TEST (FFTProcessor, GoesWithoutKillingAThreadThatHasNoTime)
{
    auto processor = std::make_unique<FFTProcessor>();

    // On its way to its first wait the thread holds locks that nobody could pass while it is held.
    pushCalmly (*processor, noise (hopSamples, 10));
    ASSERT_TRUE (waitUntil ([&] { return processor->spectrumFifo.getNumReady() == numBins; }));
    juce::Thread::sleep (20);

    StarvedThread thread (*processor);
    std::atomic released { false };

    // The C library ends the process if a thread is killed where it may not be.
    std::thread releaser (
        [&]
        {
            std::this_thread::sleep_for (std::chrono::milliseconds (1500));
            released = true;
            thread.release();
        });

    processor.reset();
    EXPECT_TRUE (released);
    releaser.join();
}

TEST (FFTProcessor, GivesOneFrameForEach512Samples)
{
    for (const auto numSamples : { 512, 1023, 1024, 10 * 512, 10 * 512 + 1 })
    {
        FFTProcessor processor;
        EXPECT_EQ (framesOf (processor, noise (numSamples, 1)).size(), (size_t) (numSamples / 512)) << numSamples;
        EXPECT_EQ (processor.audioFifo.getNumReady(), numSamples % 512) << numSamples;
        EXPECT_EQ (processor.spectrumFifo.getNumReady(), 0) << numSamples;
    }
}

TEST (FFTProcessor, FramesAreThoseOfTheSignal)
{
    FFTProcessor processor;
    const auto signal = noise (20 * hopSamples, 2);
    EXPECT_EQ (framesOf (processor, signal), expectedFramesOf (signal));
}

TEST (FFTProcessor, FullScaleSineGivesOneInItsBin)
{
    FFTProcessor processor;
    const auto frames = framesOf (processor, sine (8 * hopSamples, 100.0, 1024.0));
    ASSERT_EQ (frames.size(), 8u);

    for (size_t i = 1; i < frames.size(); ++i)
        EXPECT_NEAR (frames[i][100], 1.0f, 0.01f);
}

TEST (FFTProcessor, BlocksOfFewerSamplesWaitUntilThereAre512)
{
    FFTProcessor processor;
    const auto signal = noise (512, 3);

    for (int i = 0; i < 511; ++i)
        pushMono (processor, signal.data() + i, 1);

    juce::Thread::sleep (20);
    EXPECT_EQ (processor.audioFifo.getNumReady(), 511);
    EXPECT_EQ (processor.spectrumFifo.getNumReady(), 0);

    pushMono (processor, signal.data() + 511, 1);
    EXPECT_TRUE (waitUntil ([&] { return processor.spectrumFifo.getNumReady() == numBins; }));
    EXPECT_EQ (processor.audioFifo.getNumReady(), 0);
}

TEST (FFTProcessor, MoreThanTheQueueHoldsLeavesTheNewestSamples)
{
    FFTProcessor processor;
    processor.stopThread (timeoutMilliseconds);
    const auto signal = noise (20000, 4);
    pushMono (processor, signal.data(), 20000);

    std::vector<float> waiting (16383);
    ASSERT_EQ (processor.audioFifo.getNumReady(), 16383);
    ASSERT_TRUE (processor.audioFifo.pop (waiting.data(), 16383));
    EXPECT_EQ (cv::test::firstDifference (waiting, { signal.end() - 16383, signal.end() }), -1);
}

TEST (FFTProcessor, WithoutAReaderTheNewest31FramesStay)
{
    FFTProcessor processor;
    const auto signal = noise (100 * hopSamples, 5);
    const auto frames = framesOf (processor, signal);
    const auto expected = expectedFramesOf (signal);

    ASSERT_EQ (frames.size(), 31u);
    EXPECT_TRUE (std::equal (frames.begin(), frames.end(), expected.end() - 31));
}

TEST (FFTProcessor, FramesAreWholeAgainAfterAReaderStoppedWithinOne)
{
    FFTProcessor processor;
    const auto signal = noise (20 * hopSamples, 6);
    std::vector<float> part (100);

    pushCalmly (processor, { signal.begin(), signal.begin() + 10 * hopSamples });
    ASSERT_TRUE (waitUntil ([&] { return processor.spectrumFifo.getNumReady() == 10 * numBins; }));
    ASSERT_TRUE (processor.spectrumFifo.pop (part.data(), 100));

    const auto frames = framesOf (processor, { signal.begin() + 10 * hopSamples, signal.end() });
    const auto expected = expectedFramesOf (signal);
    ASSERT_EQ (frames.size(), 10u);
    EXPECT_TRUE (std::equal (frames.begin(), frames.end(), expected.end() - 10));
}

TEST (FFTProcessor, FramesAreWholeAgainAfterAReaderWasOverrun)
{
    FFTProcessor processor;
    const auto signal = noise (16 * hopSamples, 7);
    Frame frame ((size_t) numBins);
    std::atomic pushing { true };

    juce::Thread::launch (
        [&]
        {
            for (int i = 0; i < 500; ++i)
                pushMono (processor, signal.data(), (int) signal.size());

            pushing = false;
        });

    auto numOutOfRange = 0;

    while (pushing)
        if (processor.spectrumFifo.pop (frame.data(), numBins))
            numOutOfRange += (int) std::count_if (frame.begin(), frame.end(),
                                                  [] (float value) { return ! (value >= 0.0f && value < 2.0f); });

    EXPECT_EQ (numOutOfRange, 0);
    ASSERT_TRUE (waitUntil ([&] { return processor.audioFifo.getNumReady() < hopSamples; }));

    // Two hops of silence, and what was before is forgotten; 31 frames later the queue is, too.
    std::vector<float> calm ((size_t) (32 * hopSamples - processor.audioFifo.getNumReady()));
    calm.insert (calm.end(), signal.begin(), signal.end());
    const auto frames = framesOf (processor, calm);
    const auto expected = expectedFramesOf (signal);
    ASSERT_EQ (frames.size(), 31u);
    EXPECT_TRUE (std::equal (expected.begin(), expected.end(), frames.end() - 16));
}

TEST (FFTProcessor, AnotherRateClearsNothing)
{
    FFTProcessor processor;
    const auto signal = noise (hopSamples + 100, 8);
    pushCalmly (processor, signal);
    ASSERT_TRUE (waitUntil ([&] { return processor.spectrumFifo.getNumReady() == numBins; }));

    processor.prepareToPlay (48000.0);
    runMessageLoopFor (20);
    EXPECT_EQ (processor.audioFifo.getNumReady(), 100);
    EXPECT_EQ (processor.spectrumFifo.getNumReady(), numBins);
}

TEST (FFTProcessor, EndsWithinItsTimeWhateverItIsAt)
{
    // Much more than a machine needs that is busy with other things.
    constexpr auto limitMilliseconds = 5000.0;
    const auto audio = noise (16383, 9);

    for (const auto numWaiting : { 0, 511, 16383 })
    {
        auto processor = std::make_unique<FFTProcessor>();
        juce::Thread::sleep (20); // time to start waiting
        pushMono (*processor, audio.data(), numWaiting);

        const auto start = juce::Time::getMillisecondCounterHiRes();
        processor.reset();
        EXPECT_LT (juce::Time::getMillisecondCounterHiRes() - start, limitMilliseconds) << numWaiting;
    }
}

TEST (FFTProcessor, EndsRightAfterItsStart)
{
    for (int i = 0; i < 50; ++i)
        const FFTProcessor processor;
}
} // namespace
} // namespace cv::varlo
