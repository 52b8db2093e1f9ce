#include "support/HostLog.h"
#include "support/Keys.h"
#include "support/Mouse.h"
#include "support/VarloEditorFixture.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::areSame;
using cv::test::giveKeyboardTo;
using cv::test::pressKey;
using cv::test::render;
using cv::test::runMessageLoopUntil;
using juce::KeyPress;
using testing::ElementsAre;

class VarloKeyboardTest : public test::VarloEditorFixture
{
protected:
    VarloKeyboardTest()
    {
        // The light and the picture move by themselves.
        find<BlinkingLed>().stopTimer();
        find<SpectrogramComponent>().stopTimer();
        editor->addToDesktop (0);
        editor->setVisible (true);
        runMessageLoopUntil ([this] { return ! isLedLit(); });
    }

    static std::string getFocusedName()
    {
        const auto* const focused = juce::Component::getCurrentlyFocusedComponent();
        return focused != nullptr ? focused->getTitle().toStdString() : "";
    }

    void click (juce::Component& component) const
    {
        test::moveMouseTo (component);
        test::pressMouseOn (component);
        test::releaseMouseOn (component);
        test::sendMouse (*editor, { -50.0f, -50.0f }, false);
    }

    /** Whether the colour of the ring is at the middle of the component's left edge. */
    bool hasRing (juce::Component& component) const
    {
        const auto area = editor->getLocalArea (&component, component.getLocalBounds());
        return render (*editor).getPixelAt (area.getX() + 1, area.getCentreY())
               == component.findColour (juce::Label::textColourId);
    }
};

TEST_F (VarloKeyboardTest, TabGoesFromTheTopLeftToTheBottomRightAndBack)
{
    ASSERT_TRUE (giveKeyboardTo (*editor));
    std::vector<std::string> forwards { getFocusedName() };

    for (auto i = 0; i < 12; ++i)
    {
        EXPECT_TRUE (pressKey (*editor, KeyPress::tabKey));
        forwards.push_back (getFocusedName());
    }

    EXPECT_THAT (forwards, ElementsAre ("Varlo", "Previous preset", "Presets", "Next preset", "About", "Tap Tempo",
                                        "Delay", "Feedback", "Degrade", "Lowpass", "Resonance", "Mix", "Varlo"));

    std::vector<std::string> backwards;

    for (auto i = 0; i < 12; ++i)
    {
        pressKey (*editor, KeyPress::tabKey, juce::ModifierKeys::shiftModifier);
        backwards.push_back (getFocusedName());
    }

    EXPECT_TRUE (std::equal (backwards.rbegin(), backwards.rend(), forwards.begin()));
}

TEST_F (VarloKeyboardTest, TabLeavesATextBoxForTheNextKnobAndTakesWhatWasTyped)
{
    auto& text = findText ("Delay");
    text.showEditor();
    ASSERT_TRUE (runMessageLoopUntil (
        [&]
        {
            text.getCurrentTextEditor()->grabKeyboardFocus();
            return text.hasKeyboardFocus (true);
        }));

    text.getCurrentTextEditor()->setText ("250");
    pressKey (*editor, KeyPress::tabKey);
    EXPECT_FALSE (text.isBeingEdited());
    EXPECT_NEAR (harness.parameter ("delay").get(), 250.0f, 0.01f);
    EXPECT_EQ (getFocusedName(), "Feedback");
}

TEST_F (VarloKeyboardTest, KeysTurnTheKnobThatHasTheKeyboard)
{
    ASSERT_TRUE (giveKeyboardTo (findSlider ("Mix")));
    test::HostLog log (harness.parameter ("mix"));

    EXPECT_TRUE (pressKey (*editor, KeyPress::upKey));
    EXPECT_NEAR (harness.parameter ("mix").get(), 51.0f, 0.01f);
    EXPECT_THAT (log.entries, ElementsAre ("begin", "value", "end"));
}

TEST_F (VarloKeyboardTest, ReturnTapsAndOpensWhatButtonsOpen)
{
    ASSERT_TRUE (giveKeyboardTo (findHeaderButton ("info")));
    EXPECT_TRUE (pressKey (*editor, KeyPress::returnKey));
    EXPECT_TRUE (runMessageLoopUntil ([this] { return find<AboutComponent>().isVisible(); }));

    auto& tap = find<TapButton>();
    auto taps = 0;
    tap.onClick = [&] { ++taps; };
    find<AboutComponent>().setVisible (false);
    ASSERT_TRUE (giveKeyboardTo (tap));
    EXPECT_TRUE (pressKey (*editor, KeyPress::returnKey));
    EXPECT_TRUE (runMessageLoopUntil ([&] { return taps == 1; }));
}

TEST_F (VarloKeyboardTest, TheMenuIsOpenedWalkedAndLeftWithKeys)
{
    auto& button = *test::findComponent<juce::TextButton> (find<pluginCore::PresetsBar>());
    ASSERT_TRUE (giveKeyboardTo (button));

    EXPECT_TRUE (pressKey (*editor, KeyPress::returnKey));
    ASSERT_TRUE (runMessageLoopUntil ([] { return juce::Component::getCurrentlyModalComponent() != nullptr; }));
    EXPECT_TRUE (pressKey (*editor, KeyPress::downKey));
    EXPECT_TRUE (pressKey (*editor, KeyPress::escapeKey));

    EXPECT_TRUE (runMessageLoopUntil ([] { return juce::Component::getCurrentlyModalComponent() == nullptr; }));
    EXPECT_TRUE (runMessageLoopUntil ([&] { return button.hasKeyboardFocus (false); }));
}

TEST_F (VarloKeyboardTest, TheAboutPanelHasTheKeyboardUntilEscape)
{
    ASSERT_TRUE (giveKeyboardTo (findHeaderButton ("info")));
    auto& about = find<AboutComponent>();
    about.setVisible (true);
    EXPECT_TRUE (about.hasKeyboardFocus (false));

    // Nothing but its link is behind it, round and round.
    for (auto i = 0; i < 2; ++i)
    {
        EXPECT_TRUE (pressKey (*editor, KeyPress::tabKey));
        EXPECT_EQ (getFocusedName(), "corvane.example");
        EXPECT_TRUE (pressKey (*editor, KeyPress::tabKey, juce::ModifierKeys::shiftModifier));
        EXPECT_TRUE (about.hasKeyboardFocus (false));
    }

    EXPECT_TRUE (pressKey (*editor, KeyPress::escapeKey));
    EXPECT_FALSE (about.isVisible());
    EXPECT_EQ (getFocusedName(), "About");
}

TEST_F (VarloKeyboardTest, TheAboutPanelTakesNoKeyboardFromTheHost)
{
    juce::Component host;
    host.setWantsKeyboardFocus (true);
    host.setSize (100, 100);
    host.addToDesktop (0);
    host.setVisible (true);
    ASSERT_TRUE (giveKeyboardTo (host));

    find<AboutComponent>().setVisible (true);
    EXPECT_TRUE (host.hasKeyboardFocus (false));
    find<AboutComponent>().setVisible (false);
    EXPECT_TRUE (host.hasKeyboardFocus (false));
}

TEST_F (VarloKeyboardTest, LeavesTheTransportToTheHostWhateverHasTheKeyboard)
{
    ASSERT_TRUE (giveKeyboardTo (*editor));

    for (auto i = 0; i < 12; ++i)
    {
        for (const auto key : { KeyPress::spaceKey, KeyPress::playKey, KeyPress::stopKey, KeyPress::F1Key, (int) 'r' })
            EXPECT_FALSE (pressKey (*editor, key)) << getFocusedName() << ": " << key;

        pressKey (*editor, KeyPress::tabKey);
    }
}

TEST_F (VarloKeyboardTest, ClicksLeaveThePictureAsItWas)
{
    test::sendMouse (*editor, { -50.0f, -50.0f }, false);
    const auto before = render (*editor);

    for (const auto* const caption : { "Delay", "Mix" })
    {
        auto& slider = findSlider (caption);
        const juce::Point<float> onTheRing { (float) slider.getWidth() / 2.0f, 8.0f };
        test::sendMouse (slider, onTheRing, false);
        test::sendMouse (slider, onTheRing, true);
        test::sendMouse (slider, onTheRing, false);
        test::sendMouse (*editor, { -50.0f, -50.0f }, false);
        ASSERT_TRUE (runMessageLoopUntil ([&] { return slider.hasKeyboardFocus (false); }));
        test::runMessageLoopFor (50);
        EXPECT_TRUE (areSame (render (*editor), before)) << caption;
    }

    for (const auto* const name : { "info", "logo" })
    {
        click (findHeaderButton (name));
        find<AboutComponent>().setVisible (false);
        test::runMessageLoopFor (50);
        EXPECT_TRUE (areSame (render (*editor), before)) << name;
    }
}

TEST_F (VarloKeyboardTest, TheRingGoesWithTheTabKeyUntilAClick)
{
    ASSERT_TRUE (giveKeyboardTo (findSlider ("Delay")));
    EXPECT_FALSE (hasRing (findSlider ("Delay")));

    pressKey (*editor, KeyPress::tabKey);
    EXPECT_TRUE (runMessageLoopUntil ([this] { return hasRing (findSlider ("Feedback")); }));
    EXPECT_FALSE (hasRing (findSlider ("Delay")));

    click (find<SpectrogramComponent>());
    EXPECT_FALSE (hasRing (findSlider ("Feedback")));
}

TEST_F (VarloKeyboardTest, TheRingIsNotLeftBehindWhenTheWindowCloses)
{
    const auto& desktop = juce::Desktop::getInstance();
    const auto numOtherWindows = desktop.getNumComponents() - 1;
    auto& knob = *findSlider ("Feedback").getParentComponent();
    const auto numChildren = knob.getNumChildComponents();

    ASSERT_TRUE (giveKeyboardTo (findSlider ("Delay")));
    pressKey (*editor, KeyPress::tabKey);
    ASSERT_TRUE (runMessageLoopUntil ([this] { return hasRing (findSlider ("Feedback")); }));

    // JUCE puts it right above what it is drawn around.
    ASSERT_EQ (knob.getNumChildComponents(), numChildren + 1);
    const juce::Component::SafePointer<juce::Component> ring (
        knob.getChildComponent (knob.getIndexOfChildComponent (&findSlider ("Feedback")) + 1));
    ASSERT_NE (ring.getComponent(), nullptr);

    close();
    EXPECT_EQ (ring.getComponent(), nullptr);
    EXPECT_EQ (desktop.getNumComponents(), numOtherWindows);
    test::runMessageLoopFor (50);
    EXPECT_EQ (desktop.getNumComponents(), numOtherWindows);
}
} // namespace
} // namespace cv::varlo
