#include "varlo/editor/AudioPluginAudioProcessorEditor.h"

#include "support/HostLog.h"
#include "support/MessageLoop.h"
#include "support/Mouse.h"
#include "support/VarloEditorFixture.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::HostLog;
using cv::test::runMessageLoopUntil;
using cv::test::sendMouse;
using testing::ElementsAre;

class VarloEditorControlTest : public test::VarloEditorFixture
{
};

TEST_F (VarloEditorControlTest, EachKnobMovesItsParameter)
{
    for (const auto& [caption, id, value] :
         { std::tuple ("Delay", "delay", 250.0f), std::tuple ("Feedback", "feedback", 20.0f),
           std::tuple ("Degrade", "degrade", 30.0f), std::tuple ("Lowpass", "lowpass", 400.0f),
           std::tuple ("Reso", "resonance", 60.0f), std::tuple ("Mix", "mix", 70.0f) })
    {
        findSlider (caption).setValue (value, juce::sendNotificationSync);
        EXPECT_NEAR (harness.parameter (id).get(), value, 0.01f * value) << caption;
    }
}

TEST_F (VarloEditorControlTest, TypedValuesMoveTheDelay)
{
    EXPECT_NEAR (typeDelay ("250"), 250.0f, 0.01f);
    EXPECT_EQ (findText ("Delay").getText(), "250.0 ms");
    EXPECT_NEAR (typeDelay ("1234.5 ms"), 1234.5f, 0.01f);
    EXPECT_EQ (findText ("Delay").getText(), "1234.5 ms");
}

TEST_F (VarloEditorControlTest, TypedTextWithoutANumberIsTheShortestDelay)
{
#if JUCE_DEBUG
    GTEST_SKIP() << "JUCE asserts that typed values lie in the range.";
#else
    EXPECT_EQ (typeDelay ("soon"), 1.0f);
    EXPECT_EQ (findText ("Delay").getText(), "1.0 ms");
    EXPECT_EQ (typeDelay ("99999"), 10000.0f);
#endif
}

TEST_F (VarloEditorControlTest, DoubleClickBringsTheDefaultBack)
{
    auto& slider = findSlider ("Feedback");
    slider.setValue (3.0, juce::sendNotificationSync);

    editor->addToDesktop (0);
    editor->setVisible (true);
    const juce::Point<float> onTheRing { (float) slider.getWidth() / 2.0f, 8.0f };

    for (auto click = 0; click < 2; ++click)
    {
        sendMouse (slider, onTheRing, false);
        sendMouse (slider, onTheRing, true);
        sendMouse (slider, onTheRing, false);
    }

    EXPECT_NEAR (harness.parameter ("feedback").get(), 50.0f, 0.01f);
}

TEST_F (VarloEditorControlTest, DraggingTheValueTurnsTheKnob)
{
    editor->addToDesktop (0);
    editor->setVisible (true);
    auto& text = findText ("Mix");
    const auto centre = text.getLocalBounds().getCentre().toFloat();

    sendMouse (text, centre, false);
    sendMouse (text, centre, true);

    for (auto i = 1; i <= 5; ++i)
        sendMouse (text, centre - juce::Point (0.0f, 10.0f * (float) i), true);

    sendMouse (text, centre - juce::Point (0.0f, 50.0f), false);

    EXPECT_GT (harness.parameter ("mix").get(), 55.0f);
    EXPECT_FALSE (text.isBeingEdited());
}

TEST_F (VarloEditorControlTest, AnEditorThatClosesInADragEndsTheGesture)
{
    editor->addToDesktop (0);
    editor->setVisible (true);
    auto& slider = findSlider ("Mix");
    const juce::Point<float> onTheRing { (float) slider.getWidth() / 2.0f, 8.0f };
    HostLog log (harness.parameter ("mix"));

    sendMouse (slider, onTheRing, false);
    sendMouse (slider, onTheRing, true);
    sendMouse (slider, onTheRing - juce::Point (0.0f, 30.0f), true);
    EXPECT_THAT (log.entries, ElementsAre ("begin", "value"));

    close();
    EXPECT_THAT (log.entries, ElementsAre ("begin", "value", "end"));
    juce::ModifierKeys::currentModifiers = {};
}

TEST_F (VarloEditorControlTest, TheWheelTurnsTheKnob)
{
    editor->addToDesktop (0);
    editor->setVisible (true);
    auto& slider = findSlider ("Mix");
    auto& peer = *editor->getPeer();
    const auto position = editor->getLocalPoint (&slider, slider.getLocalBounds().getCentre()).toFloat();

    const juce::MouseWheelDetails wheel { 0.0f, 0.5f, false, false, false };
    sendMouse (slider, false);
    peer.handleMouseWheel (juce::MouseInputSource::InputSourceType::mouse, position,
                           juce::Time::currentTimeMillis() + 1000, wheel);

    EXPECT_TRUE (runMessageLoopUntil ([this] { return harness.parameter ("mix").get() > 50.5f; }));
}

TEST_F (VarloEditorControlTest, TappingSetsTheDelayInOneGesture)
{
    HostLog log (harness.parameter ("delay"));
    find<TapButton>().onTempoTapped (250.0);

    EXPECT_NEAR (harness.parameter ("delay").get(), 250.0f, 0.01f);
    EXPECT_THAT (log.entries, ElementsAre ("begin", "value", "end"));
}

TEST_F (VarloEditorControlTest, TappingTheCurrentValueIsAGestureWithoutAChange)
{
    const auto current = harness.parameter ("delay").get();
    HostLog log (harness.parameter ("delay"));
    find<TapButton>().onTempoTapped ((double) current);

    EXPECT_THAT (log.entries, ElementsAre ("begin", "end"));
    EXPECT_EQ (harness.parameter ("delay").get(), current);
}

TEST_F (VarloEditorControlTest, TapsBeyondTheRangeAreLimited)
{
    find<TapButton>().onTempoTapped (9999.0);
    EXPECT_NEAR (harness.parameter ("delay").get(), 9999.0f, 1.0f);

    find<TapButton>().onTempoTapped (0.25);
    EXPECT_EQ (harness.parameter ("delay").get(), 1.0f);

    find<TapButton>().onTempoTapped (20000.0);
    EXPECT_EQ (harness.parameter ("delay").get(), 10000.0f);
}

TEST_F (VarloEditorControlTest, ClicksOnTheTapButtonReachTheParameter)
{
    auto& button = find<TapButton>();
    EXPECT_EQ (button.getButtonText(), "Tap");

    const auto start = juce::Time::getMillisecondCounterHiRes();
    button.onClick();
    juce::Thread::sleep (123);
    button.onClick();
    const auto elapsed = juce::Time::getMillisecondCounterHiRes() - start;

    EXPECT_GE (harness.parameter ("delay").get(), 122.9f);
    EXPECT_LE (harness.parameter ("delay").get(), (float) elapsed + 0.1f);
}

TEST_F (VarloEditorControlTest, TheLedFollowsTheDelayFromWhereverItComes)
{
    auto& led = find<BlinkingLed>();
    EXPECT_EQ (led.getTimerInterval(), 1000);

    harness.set ("delay", 300.0f);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return led.getTimerInterval() == 300; }));

    juce::MemoryBlock state;
    harness.set ("delay", 150.0f);
    harness.processor.getStateInformation (state);
    harness.set ("delay", 40.0f);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return led.getTimerInterval() == 40; }));
    EXPECT_TRUE (isLedLit());

    harness.processor.setStateInformation (state.getData(), (int) state.getSize());
    EXPECT_TRUE (runMessageLoopUntil ([&] { return led.getTimerInterval() == 150; }));
    EXPECT_TRUE (runMessageLoopUntil ([&] { return ! isLedLit(); }));
}
} // namespace
} // namespace cv::varlo
