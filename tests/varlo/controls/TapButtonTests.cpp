#include "varlo/controls/TapButton.h"

#include "support/MessageLoop.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::runMessageLoopFor;
using testing::ElementsAre;

class TapButtonTest : public testing::Test
{
protected:
    TapButtonTest()
    {
        button.onTempoTapped = [this] (double ms) { reports.push_back (ms); };
    }

    /** Clicks so many milliseconds after the last time. */
    void tapAfter (double milliseconds)
    {
        now += milliseconds;
        button.onClick();
    }

    double now = 123456.0;
    TapButton button { 1000.0, [this] { return now; } };
    std::vector<double> reports;
};

TEST_F (TapButtonTest, ReportsTheAverageTimeBetweenItsClicks)
{
    tapAfter (0.0);
    EXPECT_TRUE (reports.empty());

    for (const auto pauseMilliseconds : { 200.0, 220.0, 240.0, 220.0, 200.0, 220.0 })
        tapAfter (pauseMilliseconds);

    EXPECT_THAT (reports, ElementsAre (200.0, 210.0, 220.0, 220.0, 220.0, 220.0));
}

TEST_F (TapButtonTest, StartsAfreshAfterALongPause)
{
    tapAfter (0.0);
    tapAfter (1000.5);
    EXPECT_TRUE (reports.empty());

    tapAfter (50.0);
    EXPECT_THAT (reports, ElementsAre (50.0));
}

TEST (TapButton, MeasuresRealTime)
{
    // Enough for a machine that is busy with other things.
    TapButton button { 60000.0 };
    auto report = 0.0;
    button.onTempoTapped = [&] (double ms) { report = ms; };

    const auto start = juce::Time::getMillisecondCounterHiRes();
    button.onClick();
    juce::Thread::sleep (20);
    button.onClick();
    EXPECT_GE (report, 20.0);
    EXPECT_LE (report, juce::Time::getMillisecondCounterHiRes() - start);
}

TEST_F (TapButtonTest, NeedsNobodyToReportTo)
{
    button.onTempoTapped = nullptr;
    tapAfter (0.0);
    tapAfter (200.0);
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
