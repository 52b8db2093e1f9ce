#pragma once

#include <ctime>

namespace cv::benchmarks
{
/** CPU time of the calling thread in nanoseconds: what it costs, however busy the machine is. */
inline double getThreadNanoseconds() noexcept
{
    timespec now {};
    clock_gettime (CLOCK_THREAD_CPUTIME_ID, &now);
    return (double) now.tv_sec * 1.0e9 + (double) now.tv_nsec;
}

/** What a piece of work takes of it. */
template <typename Work>
double measureNanoseconds (Work&& work)
{
    const auto start = getThreadNanoseconds();
    work();
    return getThreadNanoseconds() - start;
}
} // namespace cv::benchmarks
