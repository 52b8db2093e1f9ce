#include "varlo/controls/TapSeries.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using testing::ElementsAre;
using testing::Eq;
using testing::Optional;

constexpr auto none = std::nullopt;

/** What each tap of a series reports whose first comes at some time, and the next after so many ms each. */
std::vector<std::optional<double>> tap (const std::vector<double>& intervalsMilliseconds,
                                        double maxIntervalMilliseconds = 10000.0)
{
    TapSeries series (maxIntervalMilliseconds);
    auto now = 123456.0;
    std::vector<std::optional<double>> reports { series.addTap (now) };

    for (const auto interval : intervalsMilliseconds)
        reports.push_back (series.addTap (now += interval));

    return reports;
}

TEST (TapSeriesTest, ThreeEvenTapsReportTheirIntervalTwice)
{
    EXPECT_THAT (tap ({ 500.0, 500.0 }), ElementsAre (none, Optional (500.0), Optional (500.0)));
}

TEST (TapSeriesTest, ReportsTheAverage)
{
    EXPECT_THAT (tap ({ 500.0, 600.0, 400.0 }),
                 ElementsAre (none, Optional (500.0), Optional (550.0), Optional (500.0)));
}

TEST (TapSeriesTest, ATapMoreThanTwiceAsLateStartsAfresh)
{
    EXPECT_THAT (tap ({ 500.0, 1100.0, 700.0 }), ElementsAre (none, Optional (500.0), Eq (none), Optional (700.0)));
}

TEST (TapSeriesTest, ATapExactlyTwiceAsLateBelongsToTheSeries)
{
    EXPECT_THAT (tap ({ 500.0, 1000.0, 2000.0 }),
                 ElementsAre (none, Optional (500.0), Optional (750.0), Optional (3500.0 / 3.0)));
}

TEST (TapSeriesTest, TheLimitComesFromTheLastIntervalNotTheAverage)
{
    EXPECT_THAT (tap ({ 1000.0, 200.0, 500.0 }), ElementsAre (none, Optional (1000.0), Optional (600.0), Eq (none)));
}

TEST (TapSeriesTest, TheFirstIntervalHasTheLongestLimit)
{
    EXPECT_THAT (tap ({ 9000.0 }), ElementsAre (none, Optional (9000.0)));
    EXPECT_THAT (tap ({ 10000.0 }), ElementsAre (none, Optional (10000.0)));
    EXPECT_THAT (tap ({ 11000.0 }), ElementsAre (none, Eq (none)));
}

TEST (TapSeriesTest, NoLaterIntervalIsLongerThanTheLongest)
{
    EXPECT_THAT (tap ({ 9000.0, 10000.5 }), ElementsAre (none, Optional (9000.0), Eq (none)));
    EXPECT_THAT (tap ({ 900.0, 1000.5 }, 1000.0), ElementsAre (none, Optional (900.0), Eq (none)));
}

TEST (TapSeriesTest, TheFifthIntervalPushesTheOldestOut)
{
    const auto reports = tap ({ 100.0, 200.0, 300.0, 400.0, 500.0, 600.0 });
    EXPECT_THAT (reports, ElementsAre (none, Optional (100.0), Optional (150.0), Optional (200.0), Optional (250.0),
                                       Optional (350.0), Optional (450.0)));
}

TEST (TapSeriesTest, TwoTapsAtOnceGiveZeroAndEndTheSeries)
{
    EXPECT_THAT (tap ({ 0.0, 1.0, 1.0 }), ElementsAre (none, Optional (0.0), Eq (none), Optional (1.0)));
}
} // namespace
} // namespace cv::varlo
