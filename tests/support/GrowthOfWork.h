#pragma once

#include <algorithm>
#include <ctime>
#include <limits>

namespace cv::test
{
/** How many times the processor time of `work (smallSize)` is taken by `work (factor * smallSize)`: about `factor`
    where the work grows with the size, its square where each part of it walks through all others. The best of
    some runs each, so that a busy machine doesn't show. `prepare` makes what the work is done on, untimed.
*/
template <typename Prepare, typename Work>
double measureGrowth (int smallSize, int factor, Prepare&& prepare, Work&& work)
{
    constexpr auto numRuns = 5;

    const auto best = [&] (int size)
    {
        auto shortest = std::numeric_limits<double>::max();

        for (auto run = 0; run < numRuns; ++run)
        {
            auto subject = prepare (size);
            const auto start = std::clock();
            work (subject);
            shortest = std::min (shortest, (double) (std::clock() - start));
        }

        return std::max (shortest, 1.0);
    };

    const auto small = best (smallSize);
    return best (factor * smallSize) / small;
}
} // namespace cv::test
