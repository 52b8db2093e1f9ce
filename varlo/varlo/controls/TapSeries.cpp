#include "varlo/controls/TapSeries.h"

#include <numeric>

namespace cv::varlo
{
std::optional<double> TapSeries::addTap (double nowMilliseconds)
{
    const auto limitMilliseconds = tapIntervals.isEmpty()
                                       ? maxIntervalMilliseconds
                                       : juce::jmin (2.0 * tapIntervals.getLast(), maxIntervalMilliseconds);
    const auto elapsedMilliseconds = nowMilliseconds - lastTapTimeMilliseconds;
    const auto startsSeries = lastTapTimeMilliseconds <= 0.0 || elapsedMilliseconds > limitMilliseconds;
    lastTapTimeMilliseconds = nowMilliseconds;

    if (startsSeries)
    {
        tapIntervals.clear();
        return {};
    }

    const auto isFull = tapIntervals.size() >= maxTapIntervals;
    tapIntervals.add (elapsedMilliseconds);

    if (isFull)
        tapIntervals.remove (0);

    return std::accumulate (tapIntervals.begin(), tapIntervals.end(), 0.0) / tapIntervals.size();
}
} // namespace cv::varlo
