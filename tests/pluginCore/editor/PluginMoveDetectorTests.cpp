#include "pluginCore/editor/PluginMoveDetector.h"

#include "support/FakeDisplays.h"
#include "support/MessageLoop.h"

#include <gmock/gmock.h>

namespace cv::pluginCore
{
namespace
{
using cv::test::FakeDisplays;
using cv::test::runMessageLoopUntil;

/** Writes down, as words, what a detector says. */
class Recorder : public PluginMoveDetector::Listener
{
public:
    explicit Recorder (PluginMoveDetector& detectorToHear) : detector (detectorToHear) { detector.addListener (this); }

    ~Recorder() override { detector.removeListener (this); }

    void pluginMoved (PluginMoveDetector& source) override { add (source, "moved"); }

    void hostFocusChanged (PluginMoveDetector& source, bool lostForeground) override
    {
        add (source, lostForeground ? "lost foreground" : "got foreground");
    }

    void pluginDensityChanged (PluginMoveDetector& source, bool isHiDpi) override
    {
        add (source, isHiDpi ? "dense" : "not dense");
    }

    std::vector<juce::String> takeEvents() { return std::exchange (events, {}); }

protected:
    PluginMoveDetector& detector;

private:
    void add (PluginMoveDetector& source, const char* event)
    {
        EXPECT_EQ (&source, &detector);
        events.push_back (event);
    }

    std::vector<juce::String> events;
};

/** An editor in a window on the desktop, and a detector on the editor. */
class PluginMoveDetectorTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_FALSE (juce::Desktop::getInstance().getDisplays().displays.isEmpty()) << "This needs a display.";

        window.addAndMakeVisible (*editor);
        window.setBounds (100, 100, 80, 60);
        editor->setBounds (10, 10, 40, 30);
        show (window);
    }

    static void show (juce::Component& component)
    {
        component.addToDesktop (0);
        component.setVisible (true);
    }

    /** What one tick brings. */
    std::vector<juce::String> tick()
    {
        detector.timerCallback();
        return recorder.takeEvents();
    }

    bool isForeground = true;
    juce::Component window;
    std::unique_ptr<juce::Component> editor = std::make_unique<juce::Component>();
    PluginMoveDetector detector { *editor, [this] { return isForeground; } };
    Recorder recorder { detector };
};

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F (PluginMoveDetectorTest, FirstTickCountsAsAMove)
{
    EXPECT_THAT (tick(), ElementsAre ("got foreground", "moved"));
    EXPECT_THAT (tick(), IsEmpty());
}

TEST_F (PluginMoveDetectorTest, FirstTickAtTheOriginIsNoMove)
{
    window.setTopLeftPosition (0, 0);
    EXPECT_THAT (tick(), ElementsAre ("got foreground"));

    window.setTopLeftPosition (1, 0);
    EXPECT_THAT (tick(), ElementsAre ("moved"));
}

TEST_F (PluginMoveDetectorTest, TellsEachMoveOnce)
{
    tick();

    for (const auto position : { juce::Point (101, 100), juce::Point (101, 99), juce::Point (5, 200) })
    {
        window.setTopLeftPosition (position);
        EXPECT_THAT (tick(), ElementsAre ("moved"));
        EXPECT_THAT (tick(), IsEmpty());
    }
}

TEST_F (PluginMoveDetectorTest, OnlyTheWindowsPlaceCounts)
{
    tick();
    window.setSize (200, 200);
    editor->setTopLeftPosition (20, 20);
    EXPECT_THAT (tick(), IsEmpty());

    window.setTopLeftPosition (110, 110);
    window.setTopLeftPosition (100, 100);
    EXPECT_THAT (tick(), IsEmpty());
}

TEST_F (PluginMoveDetectorTest, TellsOfTheForegroundOnce)
{
    tick();

    isForeground = false;
    EXPECT_THAT (tick(), ElementsAre ("lost foreground"));
    EXPECT_THAT (tick(), IsEmpty());

    isForeground = true;
    EXPECT_THAT (tick(), ElementsAre ("got foreground"));
    EXPECT_THAT (tick(), IsEmpty());
}

TEST_F (PluginMoveDetectorTest, BeingInTheBackgroundFromTheStartIsNoChange)
{
    isForeground = false;
    EXPECT_THAT (tick(), IsEmpty());

    isForeground = true;
    EXPECT_THAT (tick(), ElementsAre ("got foreground", "moved"));
}

TEST_F (PluginMoveDetectorTest, AMoveInTheBackgroundIsToldWhenTheHostIsBack)
{
    tick();
    isForeground = false;
    tick();

    window.setTopLeftPosition (150, 150);
    EXPECT_THAT (tick(), IsEmpty());

    isForeground = true;
    EXPECT_THAT (tick(), ElementsAre ("got foreground", "moved"));
}

TEST_F (PluginMoveDetectorTest, TellsOfDenserPixelsAndOfTheWayBack)
{
    const FakeDisplays displays ({ 1.0, 2.0 });
    EXPECT_THAT (tick(), ElementsAre ("got foreground", "moved"));

    for (auto x = 120; x < 500; x += 20)
    {
        window.setTopLeftPosition (x, 100);

        // The editor is 40 pixels wide and stands 10 pixels to the right of the window's edge.
        if (x == FakeDisplays::widthPixels - 20)
            EXPECT_THAT (tick(), ElementsAre ("moved", "dense")) << x;
        else
            EXPECT_THAT (tick(), ElementsAre ("moved")) << x;
    }

    window.setTopLeftPosition (100, 100);
    EXPECT_THAT (tick(), ElementsAre ("moved", "not dense"));
    EXPECT_THAT (tick(), IsEmpty());
}

TEST_F (PluginMoveDetectorTest, LooksAtTheDisplayOnlyAfterAMove)
{
    tick();
    const FakeDisplays displays ({ 2.0 });
    EXPECT_THAT (tick(), IsEmpty());

    window.setTopLeftPosition (50, 50);
    EXPECT_THAT (tick(), ElementsAre ("moved", "dense"));
}

TEST_F (PluginMoveDetectorTest, NoDisplayIsNotDense)
{
    {
        const FakeDisplays displays ({ 2.0 });
        EXPECT_THAT (tick(), ElementsAre ("got foreground", "moved", "dense"));
    }

    const FakeDisplays noDisplays ({});
    window.setTopLeftPosition (50, 50);
    EXPECT_THAT (tick(), ElementsAre ("moved", "not dense"));
}

TEST_F (PluginMoveDetectorTest, FollowsTheEditorsTransform)
{
    const FakeDisplays displays ({ 1.0, 2.0 });
    tick();

    window.setTopLeftPosition (200, 100);
    EXPECT_THAT (tick(), ElementsAre ("moved"));

    editor->setTransform (juce::AffineTransform::translation (150.0f, 0.0f));
    window.setTopLeftPosition (201, 100);
    EXPECT_THAT (tick(), ElementsAre ("moved", "dense"));
}

TEST_F (PluginMoveDetectorTest, AWindowThatIsNotShownDoesNotMove)
{
    window.removeFromDesktop();
    EXPECT_THAT (tick(), ElementsAre ("got foreground"));
    EXPECT_THAT (tick(), IsEmpty());

    show (window);
    EXPECT_THAT (tick(), ElementsAre ("moved"));
}

TEST_F (PluginMoveDetectorTest, StaysWithTheWindowThatItFound)
{
    tick();

    juce::Component other;
    other.setBounds (30, 30, 50, 50);
    other.addAndMakeVisible (*editor);
    show (other);
    EXPECT_THAT (tick(), IsEmpty());

    window.setTopLeftPosition (50, 50);
    EXPECT_THAT (tick(), ElementsAre ("moved"));
}

TEST_F (PluginMoveDetectorTest, LooksForTheWindowAgainWhenItHasGone)
{
    auto first = std::make_unique<juce::Component>();
    first->setBounds (30, 30, 50, 50);
    first->addAndMakeVisible (*editor);
    show (*first);
    EXPECT_THAT (tick(), ElementsAre ("got foreground", "moved"));

    first.reset();
    EXPECT_THAT (tick(), IsEmpty());

    window.addAndMakeVisible (*editor);
    EXPECT_THAT (tick(), ElementsAre ("moved"));
}

TEST_F (PluginMoveDetectorTest, AnEditorThatHasGoneIsNotWatched)
{
    editor.reset();
    EXPECT_THAT (tick(), ElementsAre ("got foreground"));
    window.setTopLeftPosition (50, 50);
    EXPECT_THAT (tick(), IsEmpty());
}

TEST_F (PluginMoveDetectorTest, AnEditorThatGoesLeavesItsWindowWatched)
{
    const FakeDisplays displays ({ 2.0 });
    EXPECT_THAT (tick(), ElementsAre ("got foreground", "moved", "dense"));

    editor.reset();
    window.setTopLeftPosition (50, 50);
    EXPECT_THAT (tick(), ElementsAre ("moved", "not dense"));
}

/** Takes itself off the list in each call. */
class LeavingRecorder final : public Recorder
{
public:
    using Recorder::Recorder;

    void pluginMoved (PluginMoveDetector& source) override
    {
        Recorder::pluginMoved (source);
        source.removeListener (this);
    }
};

TEST_F (PluginMoveDetectorTest, ListenersMayLeaveInTheCall)
{
    LeavingRecorder leaver (detector);
    Recorder last (detector);
    tick();
    EXPECT_THAT (leaver.takeEvents(), ElementsAre ("got foreground", "moved"));

    window.setTopLeftPosition (50, 50);
    EXPECT_THAT (tick(), ElementsAre ("moved"));
    EXPECT_THAT (leaver.takeEvents(), IsEmpty());
    EXPECT_THAT (last.takeEvents(), ElementsAre ("got foreground", "moved", "moved"));
}

TEST_F (PluginMoveDetectorTest, TicksByItself)
{
    detector.startTimer (59);
    std::vector<juce::String> events;

    EXPECT_TRUE (runMessageLoopUntil (
        [&]
        {
            events = recorder.takeEvents();
            return ! events.empty();
        }));
    EXPECT_THAT (events, ElementsAre ("got foreground", "moved"));
}

TEST_F (PluginMoveDetectorTest, AsksJuceForTheForegroundByDefault)
{
    PluginMoveDetector ordinary (*editor);
    Recorder ordinaryRecorder (ordinary);

    window.setWantsKeyboardFocus (true);
    window.toFront (true);
    ASSERT_TRUE (runMessageLoopUntil ([] { return juce::Process::isForegroundProcess(); }));

    ordinary.timerCallback();
    EXPECT_THAT (ordinaryRecorder.takeEvents(), ElementsAre ("got foreground", "moved"));
}

TEST_F (PluginMoveDetectorTest, WithoutAnAnswerTheHostIsInTheBackground)
{
    PluginMoveDetector unanswered (*editor, nullptr);
    Recorder unansweredRecorder (unanswered);

    unanswered.timerCallback();
    EXPECT_THAT (unansweredRecorder.takeEvents(), IsEmpty());
}

TEST (PluginMoveDetector, KnowsDenseDisplaysByTheirScale)
{
    for (const auto scale : { 2.0, 4.0, 6.0 })
        EXPECT_TRUE (PluginMoveDetector::isHiDpiScale (scale)) << scale;

    for (const auto scale : { -2.0, 0.0, 0.5, 1.0, 1.25, 1.5, 1.75, 2.5, 3.0, 5.0 })
        EXPECT_FALSE (PluginMoveDetector::isHiDpiScale (scale)) << scale;
}
} // namespace
} // namespace cv::pluginCore
