#pragma once

namespace cv::test
{
/** Counts what the audio thread must not do, on this thread and for as long as it lives: memory that
    is allocated or freed, mutexes that are locked. The test program is linked so that the C library's
    functions are reached through counters.
*/
class AudioThreadWatch
{
public:
    AudioThreadWatch() noexcept;
    ~AudioThreadWatch() noexcept;

    int numAllocations() const noexcept;
    int numLocks() const noexcept;

    AudioThreadWatch (const AudioThreadWatch&) = delete;
    AudioThreadWatch& operator= (const AudioThreadWatch&) = delete;
};
} // namespace cv::test
