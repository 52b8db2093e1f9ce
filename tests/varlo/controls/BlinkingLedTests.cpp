#include "varlo/controls/BlinkingLed.h"

#include "support/MessageLoop.h"
#include "support/Rendering.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace cv::varlo
{
namespace
{
using cv::test::render;
using cv::test::runMessageLoopFor;
using cv::test::runMessageLoopUntil;

const juce::Colour green = juce::Colour (0xff6dce58).interpolatedWith (juce::Colour (0xff35b778), 0.5f);

class BlinkingLedTest : public testing::Test
{
protected:
    BlinkingLedTest() { led->setSize (21, 21); }

    juce::Colour getCentre() const { return render (*led).getPixelAt (10, 10); }

    bool isLit() const { return getCentre() == green; }

    std::unique_ptr<BlinkingLed> led = std::make_unique<BlinkingLed>();
};

TEST_F (BlinkingLedTest, StartsDarkAndAtRest)
{
    EXPECT_EQ (getCentre(), juce::Colours::black);
    EXPECT_FALSE (led->isTimerRunning());
}

TEST_F (BlinkingLedTest, FlashesAtOnceWhenItGetsAnInterval)
{
    led->setBlinkInterval (500);
    EXPECT_TRUE (isLit());
    EXPECT_EQ (led->getTimerInterval(), 500);

    EXPECT_TRUE (runMessageLoopUntil ([this] { return ! isLit(); }));
}

TEST_F (BlinkingLedTest, IsPaintedAgainForEachFlash)
{
    juce::Component parent;
    parent.setSize (21, 21);
    parent.addAndMakeVisible (*led);
    led->setBufferedToImage (true); // shows what was painted last
    const auto showsLight = [&] { return render (parent).getPixelAt (10, 10) == green; };

    EXPECT_FALSE (showsLight());
    led->setBlinkInterval (500);
    EXPECT_TRUE (showsLight());
    EXPECT_TRUE (runMessageLoopUntil ([&] { return ! showsLight(); }));
}

TEST_F (BlinkingLedTest, FlashesOnceInEachInterval)
{
    constexpr auto intervalMilliseconds = 120;
    std::vector<double> flashes;
    const auto start = juce::Time::getMillisecondCounterHiRes();
    led->setBlinkInterval (intervalMilliseconds);

    auto wasLit = false;
    runMessageLoopUntil (
        [&]
        {
            if (std::exchange (wasLit, isLit()) != wasLit && wasLit)
                flashes.push_back (juce::Time::getMillisecondCounterHiRes() - start);

            return flashes.size() >= 5;
        });

    // Four intervals from the start on, less what timers may come early by. When the first flash was seen doesn't
    // count, since on a busy machine that may be late.
    ASSERT_EQ (flashes.size(), 5u);
    EXPECT_GE (flashes.back(), 3.5 * intervalMilliseconds);
}

TEST_F (BlinkingLedTest, AFlashLastsAQuarterOfTheIntervalAndAtMost40Milliseconds)
{
    // Sorted, in milliseconds.
    const auto measureFlashes = [] (int intervalMilliseconds)
    {
        std::vector<double> flashes;

        for (auto i = 0; i < 11; ++i)
        {
            BlinkingLed lamp;
            lamp.setSize (21, 21);
            const auto start = juce::Time::getMillisecondCounterHiRes();
            lamp.setBlinkInterval (intervalMilliseconds);
            runMessageLoopUntil ([&] { return render (lamp).getPixelAt (10, 10) == juce::Colours::black; });
            flashes.push_back (juce::Time::getMillisecondCounterHiRes() - start);
        }

        std::sort (flashes.begin(), flashes.end());
        return flashes;
    };

    // A timer may come late by any time, and on a busy machine some milliseconds early: hence the middle one. That the
    // flash is no longer than it should be is the next test's; here it ends long before the next one begins.
    const auto longFlashes = measureFlashes (5000);
    EXPECT_GE (longFlashes[5], 30.0);
    EXPECT_LT (longFlashes[0], 2500.0);

    const auto shortFlashes = measureFlashes (100);
    EXPECT_GE (shortFlashes[5], 15.0);
}

TEST_F (BlinkingLedTest, FlashesAreAQuarterOfTheIntervalWithin20And40Milliseconds)
{
    EXPECT_EQ (BlinkingLed::getFlashMilliseconds (10000), 40);
    EXPECT_EQ (BlinkingLed::getFlashMilliseconds (164), 40);
    EXPECT_EQ (BlinkingLed::getFlashMilliseconds (160), 40);
    EXPECT_EQ (BlinkingLed::getFlashMilliseconds (159), 39);
    EXPECT_EQ (BlinkingLed::getFlashMilliseconds (80), 20);
    EXPECT_EQ (BlinkingLed::getFlashMilliseconds (79), std::nullopt);
    EXPECT_EQ (BlinkingLed::getFlashMilliseconds (0), std::nullopt);
}

TEST_F (BlinkingLedTest, StaysLitBelowAnIntervalOf80Milliseconds)
{
    led->setBlinkInterval (79);

    for (auto i = 0; i < 20; ++i)
    {
        runMessageLoopFor (10);
        ASSERT_TRUE (isLit()) << i;
    }
}

TEST_F (BlinkingLedTest, GoesOutFromAnIntervalOf80MillisecondsOn)
{
    led->setBlinkInterval (80);
    EXPECT_TRUE (isLit());
    EXPECT_TRUE (runMessageLoopUntil ([this] { return ! isLit(); }));
}

TEST_F (BlinkingLedTest, AnIntervalOfZeroLeavesARestingLampAlone)
{
    led->setBlinkInterval (0);
    EXPECT_FALSE (led->isTimerRunning());
    EXPECT_FALSE (isLit());
}

TEST_F (BlinkingLedTest, AnIntervalOfZeroKeepsARunningLampLit)
{
    led->setBlinkInterval (1000);
    EXPECT_TRUE (runMessageLoopUntil ([this] { return ! isLit(); }));

    led->setBlinkInterval (0);
    EXPECT_EQ (led->getTimerInterval(), 1);
    EXPECT_TRUE (isLit());
    runMessageLoopFor (60);
    EXPECT_TRUE (isLit());
}

TEST_F (BlinkingLedTest, TheSameIntervalRestartsNothing)
{
    led->setBlinkInterval (1000);
    EXPECT_TRUE (runMessageLoopUntil ([this] { return ! isLit(); }));
    led->setBlinkInterval (1000);
    EXPECT_FALSE (isLit());
}

TEST_F (BlinkingLedTest, ALongerIntervalWaitsForTheNextTick)
{
    led->setBlinkInterval (100);
    led->setBlinkInterval (700);
    EXPECT_EQ (led->getTimerInterval(), 100);
    EXPECT_TRUE (runMessageLoopUntil ([this] { return led->getTimerInterval() == 700; }));
}

TEST_F (BlinkingLedTest, AShorterIntervalShowsAtOnceWhenItHasPassedAlready)
{
    led->setBlinkInterval (5000);
    EXPECT_TRUE (runMessageLoopUntil ([this] { return ! isLit(); }));
    runMessageLoopFor (100);

    led->setBlinkInterval (100);
    EXPECT_EQ (led->getTimerInterval(), 100);
    EXPECT_TRUE (isLit());
}

TEST_F (BlinkingLedTest, AShorterIntervalThatHasNotPassedYetWaits)
{
    led->setBlinkInterval (100000);
    EXPECT_TRUE (runMessageLoopUntil ([this] { return ! isLit(); }));

    led->setBlinkInterval (60000);
    EXPECT_EQ (led->getTimerInterval(), 60000);
    EXPECT_FALSE (isLit());
}

TEST_F (BlinkingLedTest, CanGoWhileItIsLit)
{
    led->setBlinkInterval (1000);
    EXPECT_TRUE (isLit());
    led.reset();
    runMessageLoopFor (60);
}

TEST_F (BlinkingLedTest, HasADarkRimAndBlankCorners)
{
    led->setBlinkInterval (1000);
    const auto image = render (*led);
    EXPECT_EQ (image.getPixelAt (0, 0), juce::Colours::transparentBlack);
    EXPECT_EQ (image.getPixelAt (10, 1), juce::Colour (0xff171717));
    EXPECT_EQ (image.getPixelAt (10, 19), juce::Colour (0xff181818));
    EXPECT_EQ (image.getPixelAt (10, 3), green);
    EXPECT_EQ (image.getPixelAt (3, 10), green);
}

TEST_F (BlinkingLedTest, PaintsItselfInItsOwnGreen)
{
    led->setLedColour (juce::Colours::red);
    led->setBlinkInterval (1000);
    EXPECT_EQ (getCentre(), green);
}

TEST_F (BlinkingLedTest, PaintsInAnySize)
{
    for (const auto size : { 0, 1, 2, 3 })
    {
        led->setSize (size, size);
        juce::Image image (juce::Image::ARGB, 4, 4, true);
        juce::Graphics g (image);
        led->paint (g);
    }
}
} // namespace
} // namespace cv::varlo
