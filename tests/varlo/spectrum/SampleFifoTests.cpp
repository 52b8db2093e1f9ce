#include "varlo/spectrum/SampleFifo.h"

#include "support/Signals.h"

#include <gmock/gmock.h>

#include <numeric>
#include <thread>

namespace cv::varlo
{
namespace
{
using testing::Each;
using testing::ElementsAre;

std::vector<float> ramp (int first, int count)
{
    std::vector<float> values ((size_t) count);
    std::iota (values.begin(), values.end(), (float) first);
    return values;
}

void push (SampleFifo& fifo, const std::vector<float>& values)
{
    fifo.pushOverwriting (values.data(), (int) values.size());
}

std::vector<float> popAll (SampleFifo& fifo)
{
    std::vector<float> values ((size_t) fifo.getNumReady());
    EXPECT_TRUE (fifo.pop (values.data(), (int) values.size()));
    EXPECT_EQ (fifo.getNumReady(), 0);
    return values;
}

TEST (SampleFifo, GivesSamplesInTheOrderInWhichTheyCame)
{
    SampleFifo fifo (8);
    EXPECT_EQ (fifo.getNumReady(), 0);

    push (fifo, { 1, 2, 3 });
    push (fifo, { 4, 5 });
    EXPECT_EQ (fifo.getNumReady(), 5);
    EXPECT_THAT (popAll (fifo), ElementsAre (1, 2, 3, 4, 5));
}

TEST (SampleFifo, KeepsTheOrderAcrossTheEndOfItsMemory)
{
    SampleFifo fifo (8);

    for (int i = 0; i < 100; ++i)
    {
        push (fifo, ramp (5 * i, 5));
        ASSERT_EQ (popAll (fifo), ramp (5 * i, 5)) << i;
    }
}

TEST (SampleFifo, GivesAllThatAreAskedForOrNone)
{
    SampleFifo fifo (8);
    push (fifo, { 1, 2, 3 });

    std::vector<float> values (4, -1.0f);
    EXPECT_FALSE (fifo.pop (values.data(), 4));
    EXPECT_THAT (values, Each (-1.0f));
    EXPECT_EQ (fifo.getNumReady(), 3);

    EXPECT_TRUE (fifo.pop (values.data(), 2));
    EXPECT_THAT (values, ElementsAre (1, 2, -1, -1));
    EXPECT_EQ (fifo.getNumReady(), 1);
}

TEST (SampleFifo, HoldsOneSampleLessThanItsCapacity)
{
    SampleFifo fifo (16384);
    push (fifo, ramp (0, 16383));
    EXPECT_EQ (fifo.getNumReady(), 16383);
    EXPECT_EQ (popAll (fifo), ramp (0, 16383));
}

TEST (SampleFifo, DropsAsManyOldestAsArePushedWhenTheyDoNotFit)
{
    SampleFifo fifo (8);
    push (fifo, { 1, 2, 3, 4, 5 });

    push (fifo, { 6, 7 });
    EXPECT_EQ (fifo.getNumReady(), 7);

    push (fifo, { 8, 9 });
    EXPECT_THAT (popAll (fifo), ElementsAre (3, 4, 5, 6, 7, 8, 9));

    push (fifo, { 1, 2 });
    push (fifo, { 3, 4, 5, 6, 7, 8 });
    EXPECT_THAT (popAll (fifo), ElementsAre (3, 4, 5, 6, 7, 8));
}

TEST (SampleFifo, MoreSamplesThanItHoldsLeaveOnlyTheNewest)
{
    for (const auto numBefore : { 0, 100, 16383 })
    {
        SampleFifo fifo (16384);
        push (fifo, ramp (0, numBefore));
        push (fifo, ramp (0, 20000));
        EXPECT_EQ (fifo.getNumReady(), 16383);
        EXPECT_EQ (popAll (fifo), ramp (20000 - 16383, 16383)) << numBefore;
    }
}

TEST (SampleFifo, FramesStayWholeWhenNobodyReads)
{
    constexpr auto frameSize = 513;
    SampleFifo fifo (16384);

    for (int i = 0; i < 1000; ++i)
        push (fifo, std::vector ((size_t) frameSize, (float) i));

    ASSERT_EQ (fifo.getNumReady(), 31 * frameSize);
    std::vector<float> frame ((size_t) frameSize);

    for (int i = 1000 - 31; i < 1000; ++i)
    {
        ASSERT_TRUE (fifo.pop (frame.data(), frameSize));
        ASSERT_THAT (frame, Each ((float) i));
    }
}

TEST (SampleFifo, NothingPushedIsNothingWaiting)
{
    SampleFifo fifo (8);
    fifo.pushOverwriting (nullptr, 0);
    EXPECT_EQ (fifo.getNumReady(), 0);

    push (fifo, ramp (1, 7));
    fifo.pushOverwriting (nullptr, 0);
    EXPECT_EQ (popAll (fifo), ramp (1, 7));
}

TEST (SampleFifo, DropsAllThatWaits)
{
    SampleFifo fifo (8);
    push (fifo, { 1, 2, 3, 4, 5 });
    fifo.dropAll();
    EXPECT_EQ (fifo.getNumReady(), 0);

    push (fifo, { 6, 7, 8, 9 });
    EXPECT_THAT (popAll (fifo), ElementsAre (6, 7, 8, 9));
}

TEST (SampleFifo, ReaderThatIsOverrunOnlySeesWhatWasWritten)
{
    constexpr auto frameSize = 513;
    constexpr auto numToRead = 10000;
    constexpr auto highestValue = 1000;
    SampleFifo fifo (16384);
    std::atomic reading { true };

    const auto pushFrame = [&fifo] (int index)
    { push (fifo, std::vector ((size_t) frameSize, (float) (1 + index % highestValue))); };

    // The first frames fill the queue, so that no place of it is left unwritten.
    for (int i = 0; i < 40; ++i)
        pushFrame (i);

    std::thread writer (
        [&]
        {
            for (int i = 0; reading; ++i)
                pushFrame (i);
        });

    std::vector<float> frame ((size_t) frameSize);
    auto numUnwritten = 0, numCountsOutOfRange = 0;

    for (int numRead = 0; numRead < numToRead;)
    {
        const auto numReady = fifo.getNumReady();
        numCountsOutOfRange += numReady < 0 || numReady > 16383 ? 1 : 0;

        if (! fifo.pop (frame.data(), frameSize))
            continue;

        ++numRead;

        for (const auto value : frame)
            numUnwritten += value < 1.0f || value > (float) highestValue || std::fmod (value, 1.0f) > 0.0f ? 1 : 0;
    }

    reading = false;
    writer.join();
    EXPECT_EQ (numUnwritten, 0);
    EXPECT_EQ (numCountsOutOfRange, 0);

    push (fifo, std::vector ((size_t) frameSize, 0.5f));
    const auto rest = popAll (fifo);
    ASSERT_GE (rest.size(), (size_t) frameSize);
    EXPECT_THAT (std::vector (rest.end() - frameSize, rest.end()), Each (0.5f));
}
} // namespace
} // namespace cv::varlo
