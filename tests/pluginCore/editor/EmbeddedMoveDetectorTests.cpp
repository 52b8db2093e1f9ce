#include "pluginCore/editor/PluginMoveDetector.h"

#include "support/FakeDisplays.h"
#include "support/HostWindow.h"

#include <gtest/gtest.h>

namespace cv::pluginCore
{
namespace
{
using cv::test::FakeDisplays;
using cv::test::HostWindow;

/** A component in a window that lies in its host's, and a detector on it. */
struct EmbeddedWindow : PluginMoveDetector::Listener
{
    explicit EmbeddedWindow (juce::Point<int> position) : host ({ position.x, position.y, 80, 60 })
    {
        component.setSize (80, 60);
        component.addToDesktop (0, host.getHandle());
        component.setVisible (true);
        detector.addListener (this);
    }

    ~EmbeddedWindow() override { detector.removeListener (this); }

    void pluginMoved (PluginMoveDetector&) override { ++numMoves; }

    void hostFocusChanged (PluginMoveDetector&, bool) override {}

    void pluginDensityChanged (PluginMoveDetector&, bool isHiDpi) override { isDense = isHiDpi; }

    /** How many moves one tick tells of. */
    int tick()
    {
        numMoves = 0;
        detector.timerCallback();
        return numMoves;
    }

    const HostWindow host;
    juce::Component component;
    PluginMoveDetector detector { component, [] { return true; } };
    int numMoves = 0;
    bool isDense = false;
};

class EmbeddedMoveDetectorTest : public testing::Test
{
protected:
    void SetUp() override { ASSERT_TRUE (window.host.isOpen()) << "This needs a display."; }

    EmbeddedWindow window { { 120, 90 } };
};

TEST_F (EmbeddedMoveDetectorTest, TellsEachMoveOfTheHostsWindowOnce)
{
    EXPECT_EQ (window.tick(), 1) << "the first tick counts";
    EXPECT_EQ (window.tick(), 0);

    for (const auto position : { juce::Point (121, 90), juce::Point (121, 89), juce::Point (5, 200) })
    {
        window.host.moveTo (position);
        EXPECT_EQ (window.tick(), 1);
        EXPECT_EQ (window.tick(), 0);
        EXPECT_EQ (window.component.getScreenPosition(), position);
    }
}

TEST_F (EmbeddedMoveDetectorTest, FirstTickAtTheOriginIsNoMove)
{
    window.host.moveTo ({});
    EXPECT_EQ (window.tick(), 0);
}

TEST_F (EmbeddedMoveDetectorTest, AnotherEmbeddedWindowIsNoMove)
{
    EmbeddedWindow other ({ 300, 200 });
    window.tick();
    other.tick();

    for (auto i = 0; i < 3; ++i)
    {
        EXPECT_EQ (window.tick(), 0);
        EXPECT_EQ (other.tick(), 0);
    }

    other.host.moveTo ({ 310, 200 });
    EXPECT_EQ (window.tick(), 0);
    EXPECT_EQ (other.tick(), 1);
}

TEST_F (EmbeddedMoveDetectorTest, TellsOfDenserPixels)
{
    const FakeDisplays displays ({ 1.0, 2.0 });
    window.tick();
    EXPECT_FALSE (window.isDense);

    window.host.moveTo ({ FakeDisplays::widthPixels + 10, 50 });
    window.tick();
    EXPECT_TRUE (window.isDense);

    window.host.moveTo ({ 10, 50 });
    window.tick();
    EXPECT_FALSE (window.isDense);
}
} // namespace
} // namespace cv::pluginCore
