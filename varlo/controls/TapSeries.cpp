#include "controls/TapSeries.h"

#include <numeric>

namespace cv::varlo
{
std::optional<double> TapSeries::addTap (double nowMs)
{
    const auto limitMs =
        tapIntervals.isEmpty() ? maxIntervalMs : juce::jmin (2.0 * tapIntervals.getLast(), maxIntervalMs);
    const auto elapsedMs = nowMs - lastTapTimeMs;
    const auto startsSeries = lastTapTimeMs <= 0.0 || elapsedMs > limitMs;
    lastTapTimeMs = nowMs;

    if (startsSeries)
    {
        tapIntervals.clear();
        return {};
    }

    const auto isFull = tapIntervals.size() >= maxTapIntervals;
    tapIntervals.add (elapsedMs);

    if (isFull)
        tapIntervals.remove (0);

    return std::accumulate (tapIntervals.begin(), tapIntervals.end(), 0.0) / tapIntervals.size();
}
} // namespace cv::varlo
