#include "support/AudioThreadWatch.h"

#include <gmock/gmock.h>
#include <juce_core/juce_core.h>

#include <linux/futex.h>
#include <malloc.h>
#include <poll.h>
#include <pthread.h>
#include <semaphore.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <condition_variable>
#include <mutex>
#include <new>
#include <semaphore>
#include <shared_mutex>
#include <thread>

namespace cv::test
{
namespace
{
using testing::HasSubstr;

/** Keeps the compiler from leaving out an allocation that nobody uses. */
void* volatile keep = nullptr;

struct Counts
{
    int allocations = 0;
    int waits = 0;
};

template <typename Work>
Counts countsDuring (Work&& work)
{
    const AudioThreadWatch watch;
    work();
    return { watch.numAllocations(), watch.numWaits() };
}

/** Calls that are to be seen on the heap, each followed by its release. A sanitizer's realloc is one of
    each, so that there is no exact number.
*/
template <typename Allocate, typename Release>
void expectSeen (Allocate&& allocate, Release&& release)
{
    EXPECT_GE (countsDuring ([&] { keep = allocate(); }).allocations, 1);
    ASSERT_NE (keep, nullptr);
    EXPECT_EQ (countsDuring ([&] { release (keep); }).allocations, 1);
}

template <typename Work>
void expectOneWait (Work&& work)
{
    const auto counts = countsDuring (std::forward<Work> (work));
    EXPECT_EQ (counts.waits, 1);
    EXPECT_EQ (counts.allocations, 0);
}

timespec inThePast()
{
    return { 1, 0 };
}

struct alignas (128) Overaligned
{
    char bytes[128];
};

TEST (AudioThreadWatch, SeesNothingWhereNothingHappens)
{
    const auto counts = countsDuring ([] { keep = nullptr; });
    EXPECT_EQ (counts.allocations, 0);
    EXPECT_EQ (counts.waits, 0);
}

TEST (AudioThreadWatch, SeesTheCLibrarysHeap)
{
    expectSeen ([] { return std::malloc (10); }, std::free);
    expectSeen ([] { return std::calloc (10, 10); }, std::free);
    expectSeen ([] { return std::realloc (nullptr, 10); }, std::free);
    expectSeen ([] { return reallocarray (nullptr, 10, 10); }, std::free);
}

TEST (AudioThreadWatch, SeesAlignedMemory)
{
#if defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "ThreadSanitizer's allocator doesn't tell of these";
#endif

    expectSeen ([] { return std::aligned_alloc (64, 64); }, std::free);
    expectSeen ([] { return memalign (64, 10); }, std::free);
    expectSeen ([] { return valloc (10); }, std::free);
    expectSeen ([] { return pvalloc (10); }, std::free);
    expectSeen (
        []
        {
            void* memory = nullptr;
            return posix_memalign (&memory, 64, 10) == 0 ? memory : nullptr;
        },
        std::free);
}

TEST (AudioThreadWatch, SeesMemoryThatGrows)
{
    keep = std::malloc (10);
    EXPECT_GE (countsDuring ([] { keep = std::realloc (keep, 100000); }).allocations, 1);
    std::free (keep);
}

TEST (AudioThreadWatch, SeesNewAndDeleteInAllForms)
{
    const std::align_val_t alignment { 128 };

    expectSeen ([] { return ::operator new (10); }, [] (void* p) { ::operator delete (p); });
    expectSeen ([] { return ::operator new[] (10); }, [] (void* p) { ::operator delete[] (p); });
    expectSeen ([] { return ::operator new (10, std::nothrow); },
                [] (void* p) { ::operator delete (p, std::nothrow); });
    expectSeen ([] { return ::operator new[] (10, std::nothrow); },
                [] (void* p) { ::operator delete[] (p, std::nothrow); });
    expectSeen ([=] { return ::operator new (128, alignment); }, [=] (void* p) { ::operator delete (p, alignment); });
    expectSeen ([=] { return ::operator new[] (128, alignment); },
                [=] (void* p) { ::operator delete[] (p, alignment); });
    expectSeen ([=] { return ::operator new (128, alignment, std::nothrow); },
                [=] (void* p) { ::operator delete (p, alignment, std::nothrow); });
    expectSeen ([=] { return ::operator new[] (128, alignment, std::nothrow); },
                [=] (void* p) { ::operator delete[] (p, alignment, std::nothrow); });
    expectSeen ([] { return new Overaligned; }, [] (void* p) { delete static_cast<Overaligned*> (p); });

#if defined(__cpp_sized_deallocation)
    expectSeen ([] { return ::operator new (10); }, [] (void* p) { ::operator delete (p, (std::size_t) 10); });
    expectSeen ([] { return ::operator new[] (10); }, [] (void* p) { ::operator delete[] (p, (std::size_t) 10); });
    expectSeen ([=] { return ::operator new (128, alignment); },
                [=] (void* p) { ::operator delete (p, (std::size_t) 128, alignment); });
    expectSeen ([=] { return ::operator new[] (128, alignment); },
                [=] (void* p) { ::operator delete[] (p, (std::size_t) 128, alignment); });
#endif
}

TEST (AudioThreadWatch, SeesWhatLibrariesDoWithinThemselves)
{
    std::string text (1000, 'x');
    EXPECT_GE (countsDuring ([&] { text.append (100000, 'y'); }).allocations, 1);

    juce::String juceText ("x");
    EXPECT_GE (countsDuring ([&] { juceText << "yyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyyy"; }).allocations,
               1);

    EXPECT_GE (countsDuring ([] { keep = strdup ("x"); }).allocations, 1);
    std::free (keep);
}

TEST (AudioThreadWatch, FreeingNothingIsNothing)
{
    EXPECT_EQ (countsDuring ([] { std::free (nullptr); }).allocations, 0);
    EXPECT_EQ (countsDuring ([] { ::operator delete (nullptr); }).allocations, 0);
}

TEST (AudioThreadWatch, SeesMutexes)
{
    std::mutex mutex;
    std::recursive_mutex recursive;
    const juce::CriticalSection criticalSection;

    expectOneWait ([&] { const std::lock_guard lock (mutex); });
    expectOneWait ([&] { const std::lock_guard lock (recursive); });
    expectOneWait ([&] { const juce::ScopedLock lock (criticalSection); });
    const juce::WaitableEvent event;
    expectOneWait ([&] { event.signal(); });

    // A mutex that is locked already, and a time that has run out.
    mutex.lock();
    const auto past = inThePast();
    expectOneWait ([&] { EXPECT_EQ (pthread_mutex_timedlock (mutex.native_handle(), &past), ETIMEDOUT); });
    expectOneWait ([&]
                   { EXPECT_EQ (pthread_mutex_clocklock (mutex.native_handle(), CLOCK_MONOTONIC, &past), ETIMEDOUT); });
    mutex.unlock();
}

TEST (AudioThreadWatch, SeesReadWriteLocksAndSpinLocks)
{
    std::shared_mutex mutex;
    expectOneWait ([&] { const std::unique_lock lock (mutex); });
    expectOneWait ([&] { const std::shared_lock lock (mutex); });

    pthread_rwlock_t lock = PTHREAD_RWLOCK_INITIALIZER;
    const auto past = inThePast();
    expectOneWait ([&] { EXPECT_EQ (pthread_rwlock_timedrdlock (&lock, &past), 0); });
    pthread_rwlock_unlock (&lock);
    expectOneWait ([&] { EXPECT_EQ (pthread_rwlock_timedwrlock (&lock, &past), 0); });
    pthread_rwlock_unlock (&lock);
    expectOneWait ([&] { EXPECT_EQ (pthread_rwlock_clockrdlock (&lock, CLOCK_MONOTONIC, &past), 0); });
    pthread_rwlock_unlock (&lock);
    expectOneWait ([&] { EXPECT_EQ (pthread_rwlock_clockwrlock (&lock, CLOCK_MONOTONIC, &past), 0); });
    pthread_rwlock_unlock (&lock);

    pthread_spinlock_t spinLock {};
    pthread_spin_init (&spinLock, PTHREAD_PROCESS_PRIVATE);
    expectOneWait ([&] { pthread_spin_lock (&spinLock); });
    pthread_spin_unlock (&spinLock);
}

TEST (AudioThreadWatch, SeesConditionVariables)
{
    std::mutex mutex;
    std::unique_lock lock (mutex);
    std::condition_variable condition;

    expectOneWait ([&] { condition.wait_for (lock, std::chrono::milliseconds (1)); });
    expectOneWait ([&] { condition.wait_until (lock, std::chrono::system_clock::now()); });

    // This one needs waking; it locks nothing itself before it is back.
    std::atomic done { false };
    std::thread waker (
        [&]
        {
            while (! done)
                condition.notify_all();
        });
    expectOneWait ([&] { condition.wait (lock); });
    done = true;
    waker.join();
}

TEST (AudioThreadWatch, SeesSemaphoresBarriersAndThreads)
{
    sem_t semaphore;
    sem_init (&semaphore, 0, 3);
    const auto past = inThePast();
    expectOneWait ([&] { sem_wait (&semaphore); });
    expectOneWait ([&] { sem_timedwait (&semaphore, &past); });
    expectOneWait ([&] { sem_clockwait (&semaphore, CLOCK_MONOTONIC, &past); });
    sem_destroy (&semaphore);

    std::counting_semaphore<1> counting (0);
    EXPECT_GE (countsDuring ([&] { (void) counting.try_acquire_for (std::chrono::milliseconds (1)); }).waits, 1);

    pthread_barrier_t barrier;
    pthread_barrier_init (&barrier, nullptr, 1);
    expectOneWait ([&] { pthread_barrier_wait (&barrier); });
    pthread_barrier_destroy (&barrier);

    std::thread thread ([] {});
    EXPECT_EQ (countsDuring ([&] { thread.join(); }).waits, 1);
}

TEST (AudioThreadWatch, SeesWhatAtomicsWaitWith)
{
    int word = 0;
    const auto callFutex = [&word] (int operation, int value)
    { syscall (SYS_futex, &word, operation, value, nullptr, nullptr, 0); };

    expectOneWait ([&] { callFutex (FUTEX_WAIT_PRIVATE, word + 1); }); // returns at once, the word being another
    EXPECT_EQ (countsDuring ([&] { callFutex (FUTEX_WAKE_PRIVATE, 1); }).waits, 0);
}

TEST (AudioThreadWatch, SeesSleepAndPolling)
{
    expectOneWait ([] { std::this_thread::sleep_for (std::chrono::microseconds (1)); });
    expectOneWait ([] { juce::Thread::sleep (1); });
    expectOneWait ([] { std::this_thread::yield(); });
    expectOneWait ([] { usleep (1); });
    expectOneWait ([] { sleep (0); });
    expectOneWait ([] { poll (nullptr, 0, 0); });
    expectOneWait (
        []
        {
            const timespec time { 0, 1 };
            clock_nanosleep (CLOCK_MONOTONIC, 0, &time, nullptr);
        });
    expectOneWait (
        []
        {
            timeval time { 0, 1 };
            select (0, nullptr, nullptr, nullptr, &time);
        });
}

TEST (AudioThreadWatch, TryingAndWakingIsNoWaiting)
{
    std::mutex mutex;
    std::condition_variable condition;

    EXPECT_EQ (countsDuring (
                   [&]
                   {
                       if (mutex.try_lock())
                           mutex.unlock();

                       condition.notify_all();
                   })
                   .waits,
               0);
}

TEST (AudioThreadWatch, OtherThreadsAreNotItsConcern)
{
    std::atomic started { false }, watching { false }, done { false };
    std::thread other (
        [&]
        {
            started = true;

            while (! watching)
                std::this_thread::yield();

            std::mutex mutex;
            const std::lock_guard lock (mutex);
            std::free (std::malloc (1000));
            done = true;
        });

    while (! started)
        std::this_thread::yield();

    const auto counts = countsDuring (
        [&]
        {
            watching = true;

            while (! done)
            {
            }
        });
    other.join();
    EXPECT_EQ (counts.allocations, 0);
    EXPECT_EQ (counts.waits, 0);
}

TEST (AudioThreadWatch, SeesNothingBeforeAndAfter)
{
    std::free (std::malloc (10));
    AudioThreadWatch watch;
    watch.stop();
    std::free (std::malloc (10));
    EXPECT_EQ (watch.getNumCalls(), 0);
}

TEST (AudioThreadWatch, InnermostOfTwoSees)
{
    const AudioThreadWatch outer;
    {
        const AudioThreadWatch inner;
        keep = std::malloc (10);
        EXPECT_EQ (inner.numAllocations(), 1);
    }
    std::free (keep);
    EXPECT_EQ (outer.numAllocations(), 1);
}

TEST (AudioThreadWatch, TellsWhatWasCalledAndFromWhere)
{
    AudioThreadWatch watch;
    keep = std::malloc (1234);
    watch.stop();

    ASSERT_EQ (watch.getCalls().size(), 1u);
    const auto call = watch.getCalls()[0];
    EXPECT_EQ (call.kind, AudioThreadCall::Kind::allocation);
    EXPECT_EQ (call.object, keep);
    EXPECT_EQ (call.numBytes, 1234u);
    EXPECT_GT (call.numCallers, 2);
    EXPECT_THAT (call.describe(), HasSubstr ("1234 bytes"));
    EXPECT_THAT (call.describe(), HasSubstr ("varlo_tests"));
    std::free (keep);
}

TEST (AudioThreadWatch, CountsMoreCallsThanItKeeps)
{
    constexpr auto numCalls = 3 * AudioThreadWatch::maxCalls;
    AudioThreadWatch watch;

    for (int i = 0; i < numCalls; ++i)
        std::this_thread::yield();

    watch.stop();
    EXPECT_EQ (watch.getNumCalls(), numCalls);
    EXPECT_EQ (watch.getCalls().size(), (std::size_t) AudioThreadWatch::maxCalls);
}
} // namespace
} // namespace cv::test
