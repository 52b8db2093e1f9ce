#include "varlo/controls/TapButton.h"

#include "support/MessageLoop.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::runMessageLoopFor;

class TapButtonTest : public testing::Test
{
protected:
    TapButtonTest()
    {
        button.onTempoTapped = [this] (double ms) { reports.push_back (ms); };
    }

    /** Clicks, and notes when. */
    void tap()
    {
        const auto before = juce::Time::getMillisecondCounterHiRes();
        button.onClick();
        taps.push_back ({ before, juce::Time::getMillisecondCounterHiRes() });
    }

    /** True if a report is an average of intervals between the noted taps from one to another. */
    bool isAverage (double report, size_t first, size_t last) const
    {
        const auto count = (double) (last - first);
        return report >= (taps[last].getStart() - taps[first].getEnd()) / count
               && report <= (taps[last].getEnd() - taps[first].getStart()) / count;
    }

    TapButton button { 1000.0 };
    std::vector<double> reports;
    std::vector<juce::Range<double>> taps;
};

TEST_F (TapButtonTest, ReportsTheAverageTimeBetweenItsClicks)
{
    tap();
    EXPECT_TRUE (reports.empty());

    for (const auto pauseMilliseconds : { 200, 220, 240, 220, 200, 220 })
    {
        juce::Thread::sleep (pauseMilliseconds);
        tap();
    }

    ASSERT_EQ (reports.size(), 6u);
    EXPECT_GE (reports.front(), 200.0);

    for (size_t i = 0; i < reports.size(); ++i)
        EXPECT_TRUE (isAverage (reports[i], i < 4 ? 0 : i - 3, i + 1)) << i << ": " << reports[i];
}

TEST_F (TapButtonTest, StartsAfreshAfterALongPause)
{
    tap();
    juce::Thread::sleep (1010);
    tap();
    EXPECT_TRUE (reports.empty());

    juce::Thread::sleep (50);
    tap();
    ASSERT_EQ (reports.size(), 1u);
    EXPECT_TRUE (isAverage (reports.front(), 1, 2)) << reports.front();
}

TEST_F (TapButtonTest, NeedsNobodyToReportTo)
{
    button.onTempoTapped = nullptr;
    tap();
    tap();
    EXPECT_TRUE (reports.empty());
}

TEST_F (TapButtonTest, CountsClicks)
{
    button.triggerClick();
    runMessageLoopFor (20);
    button.triggerClick();
    EXPECT_TRUE (cv::test::runMessageLoopUntil ([this] { return ! reports.empty(); }));
}
} // namespace
} // namespace cv::varlo
