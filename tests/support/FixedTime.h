#pragma once

#include <cstdint>

namespace cv::test
{
/** Makes the time of day stand still for as long as this lives: juce::Time::currentTimeMillis() tells what was
    given here. Timers and waits go on. One at a time; programs that hold it have to be linked with
    --wrap=gettimeofday.
*/
class FixedTime
{
public:
    /** Milliseconds since 1970. */
    explicit FixedTime (std::int64_t milliseconds);
    ~FixedTime();

    FixedTime (const FixedTime&) = delete;
    FixedTime& operator= (const FixedTime&) = delete;
};
} // namespace cv::test
