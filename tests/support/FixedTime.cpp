#include "support/FixedTime.h"

#include <sys/time.h>

#include <atomic>

namespace cv::test
{
namespace
{
constexpr std::int64_t none = -1;

std::atomic<std::int64_t> fixedMilliseconds { none };
} // namespace

FixedTime::FixedTime (std::int64_t milliseconds)
{
    fixedMilliseconds = milliseconds;
}

FixedTime::~FixedTime()
{
    fixedMilliseconds = none;
}

// The linker's --wrap sends every call of NAME to __wrap_NAME and __real_NAME to the original.
extern "C"
{
    int __real_gettimeofday (timeval*, void*);

    int __wrap_gettimeofday (timeval* time, void* zone)
    {
        const auto milliseconds = fixedMilliseconds.load();

        if (milliseconds == none)
            return __real_gettimeofday (time, zone);

        time->tv_sec = (time_t) (milliseconds / 1000);
        time->tv_usec = (suseconds_t) (milliseconds % 1000 * 1000);
        return 0;
    }
}
} // namespace cv::test
