#include "support/AudioThreadGuard.h"

#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include <mutex>
#include <thread>

namespace cv::test
{
namespace
{
using Kind = AudioThreadCall::Kind;

void* volatile keep = nullptr;

void allocate()
{
    keep = std::malloc (1234);
}

// What EXPECT_NONFATAL_FAILURE runs may not use a test's variables.

void allocateUnderGuard()
{
    const AudioThreadGuard guard;
    allocate();
}

void freeUnderGuard()
{
    const AudioThreadGuard guard;
    std::free (keep);
}

void lockUnderGuard()
{
    std::mutex mutex;
    const AudioThreadGuard guard;
    const std::lock_guard lock (mutex);
}

void allocateUnderGuardThatAcceptsReleases()
{
    const AudioThreadGuard guard ([] (const AudioThreadCall& call) { return call.kind == Kind::release; });
    allocate();
    std::free (keep);
}

void callOftenUnderGuardThatAcceptsAll()
{
    const AudioThreadGuard guard ([] (const AudioThreadCall&) { return true; });

    for (int i = 0; i <= AudioThreadWatch::maxCalls; ++i)
        std::this_thread::yield();
}

TEST (AudioThreadGuard, FailsTheTestForEachCall)
{
    EXPECT_NONFATAL_FAILURE (allocateUnderGuard(), "1234 bytes");
    EXPECT_NONFATAL_FAILURE (freeUnderGuard(), "on the audio thread: ");
    EXPECT_NONFATAL_FAILURE (lockUnderGuard(), "pthread_mutex_lock");
}

TEST (AudioThreadGuard, LetsPassWhatItIsToldTo)
{
    const AudioThreadGuard guard ([] (const AudioThreadCall& call) { return call.kind != Kind::wait; });
    allocate();
    std::free (keep);
}

TEST (AudioThreadGuard, FailsForWhatIsNotAccepted)
{
    EXPECT_NONFATAL_FAILURE (allocateUnderGuardThatAcceptsReleases(), "1234 bytes");
}

TEST (AudioThreadGuard, FailsWhenThereAreMoreCallsThanItCanJudge)
{
    EXPECT_NONFATAL_FAILURE (callOftenUnderGuardThatAcceptsAll(), "17 calls in all");
}

TEST (AudioThreadGuard, OtherThreadsMayDoAllThis)
{
    std::atomic done { false };
    std::thread other (
        [&]
        {
            while (! done)
                std::free (std::malloc (1000));
        });

    {
        const AudioThreadGuard guard;
        volatile unsigned sum = 0;

        for (unsigned i = 0; i < 1000000; ++i)
            sum = sum + i;
    }

    done = true;
    other.join();
}
} // namespace
} // namespace cv::test
