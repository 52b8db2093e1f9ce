#pragma once

#include <juce_core/juce_core.h>

#include <optional>

namespace cv::varlo
{
/** Finds the tempo in a series of taps: the average of the last four intervals. A tap that comes later than
    twice the last interval, or than the longest one, starts a new series, so a player may slow down by less than
    a factor of two at a time. One thread at a time.
*/
class TapSeries
{
public:
    explicit TapSeries (double longestIntervalMilliseconds) : maxIntervalMilliseconds (longestIntervalMilliseconds) {}

    /** Takes the time of a tap, in milliseconds of a clock that is above 0 and never goes back. Returns the
        average interval in milliseconds; none for the first tap of a series.
    */
    std::optional<double> addTap (double nowMilliseconds);

private:
    static constexpr int maxTapIntervals = 4;

    const double maxIntervalMilliseconds;
    double lastTapTimeMilliseconds = 0.0; // 0 before the first tap
    juce::Array<double> tapIntervals;     // the oldest first
};
} // namespace cv::varlo
