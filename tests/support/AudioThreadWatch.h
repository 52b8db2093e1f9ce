#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <string>

namespace cv::test
{
/** One call that an audio thread should not make. */
struct AudioThreadCall
{
    enum class Kind
    {
        allocation,
        release,
        wait
    };

    /** Its name, the functions it was called from, and what it was about. */
    std::string describe() const;

    Kind kind = Kind::allocation;
    const char* function = "";

    /** The memory that was given or taken back, or what was locked or waited for. */
    const void* object = nullptr;

    /** The size of an allocation, 0 for all else. */
    std::size_t numBytes = 0;

    std::array<void*, 16> callers {};
    int numCallers = 0;
};

/** Notes each call on this thread, while it lives, that uses the heap or may wait for another thread:
    malloc and free in all forms, and with them all forms of new and delete; locks of mutexes,
    read-write locks and spin locks; waits for condition variables, semaphores, barriers, threads, files
    and time. Calls from the C++ library and other shared libraries count too.

    Not noted are attempts to lock that return at once, unlocking, waking others, freeing a null pointer,
    and loops that spin on an atomic of their own.

    Of watches within each other the innermost notes.
*/
class AudioThreadWatch
{
public:
    AudioThreadWatch() noexcept;

    ~AudioThreadWatch() noexcept { stop(); }

    /** Ends the watch before its time. */
    void stop() noexcept;

    /** Calls that allocate or release memory. */
    int numAllocations() const noexcept { return numHeapCalls; }

    int numWaits() const noexcept { return numCalls - numHeapCalls; }

    int getNumCalls() const noexcept { return numCalls; }

    /** The first of the calls, in order. Past maxCalls they are only counted. */
    std::span<const AudioThreadCall> getCalls() const noexcept;

    static constexpr int maxCalls = 16;

    /** For the functions that stand in the way of the C library's. */
    static void note (AudioThreadCall::Kind, const char* function, const void* object, std::size_t numBytes) noexcept;

    AudioThreadWatch (const AudioThreadWatch&) = delete;
    AudioThreadWatch& operator= (const AudioThreadWatch&) = delete;

private:
    void add (AudioThreadCall::Kind, const char* function, const void* object, std::size_t numBytes) noexcept;

    AudioThreadWatch* const outer;
    bool watching = true;
    int numCalls = 0;
    int numHeapCalls = 0;
    std::array<AudioThreadCall, maxCalls> calls {};
};
} // namespace cv::test
