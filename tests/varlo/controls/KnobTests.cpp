#include "varlo/controls/Knob.h"

#include "support/FindComponent.h"
#include "support/HostLog.h"
#include "support/Keys.h"
#include "support/ProcessorHarness.h"
#include "varlo/controls/LabelledSlider.h"
#include "varlo/lookAndFeel/PluginLookAndFeel.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::findComponent;
using juce::KeyPress;
using juce::ModifierKeys;
using testing::ElementsAre;
using testing::IsEmpty;

/** A knob for the delay, 1 to 10000 ms with 1000 in the middle of its way. */
class KnobTest : public testing::Test
{
protected:
    bool press (int keyCode, int modifiers = ModifierKeys::noModifiers)
    {
        return knob.keyPressed (KeyPress (keyCode, ModifierKeys (modifiers), 0));
    }

    double getPosition() { return knob.valueToProportionOfLength (knob.getValue()); }

    float getDelay() { return harness.parameter ("delay").get(); }

    test::ProcessorHarness harness;
    juce::AudioProcessorValueTreeState& state = harness.processor.getValueTreeState();
    LabelledSlider labelled { state, "delay", "Delay", "What it is for" };
    Knob& knob = *findComponent<Knob> (labelled);
    test::HostLog hostLog { harness.parameter ("delay") };
};

TEST_F (KnobTest, ArrowsTurnItByAHundredthOfItsWay)
{
    for (const auto up : { KeyPress::upKey, KeyPress::rightKey })
    {
        knob.setValue (1000.0, juce::sendNotificationSync);
        EXPECT_TRUE (press (up));
        EXPECT_NEAR (getPosition(), 0.51, 1e-6);
        EXPECT_NEAR (getDelay(), 1067.9f, 0.1f);
    }

    for (const auto down : { KeyPress::downKey, KeyPress::leftKey })
    {
        knob.setValue (1000.0, juce::sendNotificationSync);
        EXPECT_TRUE (press (down));
        EXPECT_NEAR (getPosition(), 0.49, 1e-6);
    }
}

TEST_F (KnobTest, ShiftMakesTheStepTenTimesFiner)
{
    EXPECT_TRUE (press (KeyPress::upKey, ModifierKeys::shiftModifier));
    EXPECT_NEAR (getPosition(), 0.501, 1e-6);
    EXPECT_TRUE (press (KeyPress::leftKey, ModifierKeys::shiftModifier));
    EXPECT_NEAR (getPosition(), 0.5, 1e-6);
}

TEST_F (KnobTest, PageKeysTurnItByATenth)
{
    EXPECT_TRUE (press (KeyPress::pageUpKey));
    EXPECT_NEAR (getPosition(), 0.6, 1e-6);
    EXPECT_TRUE (press (KeyPress::pageDownKey));
    EXPECT_TRUE (press (KeyPress::pageDownKey));
    EXPECT_NEAR (getPosition(), 0.4, 1e-6);
}

TEST_F (KnobTest, HomeAndEndAreTheEndsAndStepsStopThere)
{
    EXPECT_TRUE (press (KeyPress::endKey));
    EXPECT_EQ (getDelay(), 10000.0f);
    EXPECT_TRUE (press (KeyPress::upKey));
    EXPECT_EQ (getDelay(), 10000.0f);

    EXPECT_TRUE (press (KeyPress::homeKey));
    EXPECT_EQ (getDelay(), 1.0f);
    EXPECT_TRUE (press (KeyPress::pageDownKey));
    EXPECT_EQ (getDelay(), 1.0f);
}

TEST_F (KnobTest, DeleteBringsTheDefaultBack)
{
    press (KeyPress::homeKey);
    EXPECT_TRUE (press (KeyPress::deleteKey));
    EXPECT_NEAR (getDelay(), 1000.0f, 0.01f);
}

TEST_F (KnobTest, AHundredStepsUpAndDownLeadBack)
{
    knob.setValue (1.0, juce::sendNotificationSync);

    for (auto i = 0; i < 100; ++i)
        press (KeyPress::upKey);

    EXPECT_NEAR (getDelay(), 10000.0f, 1.0f);

    for (auto i = 0; i < 100; ++i)
        press (KeyPress::downKey);

    EXPECT_NEAR (getDelay(), 1.0f, 0.01f);
}

TEST_F (KnobTest, EachKeyIsAGestureOfItsOwn)
{
    press (KeyPress::upKey);
    EXPECT_THAT (hostLog.entries, ElementsAre ("begin", "value", "end"));

    press (KeyPress::endKey);
    EXPECT_THAT (hostLog.entries, ElementsAre ("begin", "value", "end", "begin", "value", "end"));
}

TEST_F (KnobTest, AKeyThatChangesNothingIsNoGesture)
{
    press (KeyPress::endKey);
    hostLog.entries.clear();

    EXPECT_TRUE (press (KeyPress::endKey));
    EXPECT_TRUE (press (KeyPress::upKey));
    EXPECT_THAT (hostLog.entries, IsEmpty());
}

TEST_F (KnobTest, EachKeyIsUndoneByItself)
{
    auto& undoManager = harness.processor.getUndoManager();
    state.copyState(); // takes over what the tree doesn't know yet

    press (KeyPress::upKey);
    state.copyState();
    press (KeyPress::endKey);
    state.copyState();
    EXPECT_EQ (getDelay(), 10000.0f);

    EXPECT_TRUE (undoManager.undo());
    EXPECT_NEAR (getDelay(), 1067.9f, 0.1f);
    EXPECT_TRUE (undoManager.undo());
    EXPECT_NEAR (getDelay(), 1000.0f, 0.01f);
}

TEST_F (KnobTest, LeavesAllOtherKeysToTheHost)
{
    for (const auto key :
         { KeyPress::spaceKey, KeyPress::tabKey, KeyPress::escapeKey, KeyPress::backspaceKey, KeyPress::insertKey,
           KeyPress::F1Key, KeyPress::playKey, KeyPress::stopKey, (int) 'a', (int) '5' })
        EXPECT_FALSE (press (key)) << key;

    for (const auto key : { KeyPress::upKey, KeyPress::leftKey, KeyPress::homeKey, KeyPress::pageUpKey,
                            KeyPress::returnKey, KeyPress::deleteKey })
        for (const auto modifier :
             { ModifierKeys::ctrlModifier, ModifierKeys::altModifier, ModifierKeys::commandModifier })
            EXPECT_FALSE (press (key, modifier)) << key;

    EXPECT_THAT (hostLog.entries, IsEmpty());
}

TEST_F (KnobTest, IsOneStopOfTheTabKeyWithItsTextBox)
{
    const auto expectOneStop = [this]
    {
        EXPECT_TRUE (knob.getWantsKeyboardFocus());

        for (auto* const child : knob.getChildren())
            EXPECT_FALSE (child->getWantsKeyboardFocus());
    };

    expectOneStop();

    // Both of these make the text box anew or set it up anew.
    knob.sendLookAndFeelChange();
    expectOneStop();
    knob.setEnabled (false);
    knob.setEnabled (true);
    expectOneStop();
}

class ShownKnobTest : public KnobTest
{
protected:
    ShownKnobTest()
    {
        labelled.setLookAndFeel (&lookAndFeel);
        labelled.setSize (130, 139);
        labelled.addToDesktop (0);
        labelled.setVisible (true);
    }

    ~ShownKnobTest() override
    {
        labelled.removeFromDesktop();
        labelled.setLookAndFeel (nullptr);
    }

    juce::Label& getTextBox() { return *findComponent<juce::Label> (knob); }

    /** Types into the text box as the keyboard does, and then presses a key that leaves it. True once it is left. */
    bool type (const juce::String& text, int lastKey)
    {
        for (const auto character : text)
            test::pressKey (labelled, KeyPress ((int) character, ModifierKeys(), character));

        test::pressKey (labelled, lastKey);
        return test::runMessageLoopUntil ([this] { return ! getTextBox().isBeingEdited(); });
    }

    PluginLookAndFeel lookAndFeel;
};

TEST_F (ShownKnobTest, ReturnOpensTheTextBoxAndReturnTakesWhatWasTyped)
{
    ASSERT_TRUE (test::giveKeyboardTo (knob));
    EXPECT_TRUE (test::pressKey (labelled, KeyPress::returnKey));
    ASSERT_TRUE (getTextBox().isBeingEdited());
    EXPECT_EQ (getTextBox().getCurrentTextEditor()->getTitle(), "Delay");

    EXPECT_TRUE (type ("250", KeyPress::returnKey));
    EXPECT_NEAR (getDelay(), 250.0f, 0.01f);
    EXPECT_TRUE (knob.hasKeyboardFocus (false));
}

TEST_F (ShownKnobTest, EscapeLeavesTheTextBoxAndTheValue)
{
    ASSERT_TRUE (test::giveKeyboardTo (knob));
    test::pressKey (labelled, KeyPress::returnKey);
    ASSERT_TRUE (getTextBox().isBeingEdited());

    EXPECT_TRUE (type ("250", KeyPress::escapeKey));
    EXPECT_NEAR (getDelay(), 1000.0f, 0.01f);
    EXPECT_THAT (hostLog.entries, IsEmpty());
    EXPECT_TRUE (knob.hasKeyboardFocus (false));
}

TEST_F (ShownKnobTest, TellsAScreenReaderWhatItIs)
{
    auto& handler = *knob.getAccessibilityHandler();
    EXPECT_EQ (handler.getRole(), juce::AccessibilityRole::slider);
    EXPECT_EQ (handler.getTitle(), "Delay");
    EXPECT_EQ (handler.getHelp(), "What it is for");

    auto& value = *handler.getValueInterface();
    EXPECT_FALSE (value.isReadOnly());
    EXPECT_NEAR (value.getCurrentValue(), 1000.0, 1e-3);
    EXPECT_EQ (value.getCurrentValueAsString(), "1000.0 ms");
    EXPECT_EQ (value.getRange().getMinimumValue(), 1.0);
    EXPECT_EQ (value.getRange().getMaximumValue(), 10000.0);
}

TEST_F (ShownKnobTest, AScreenReaderSetsItInAGesture)
{
    auto& value = *knob.getAccessibilityHandler()->getValueInterface();

    value.setValue (250.0);
    EXPECT_NEAR (getDelay(), 250.0f, 0.01f);
    EXPECT_THAT (hostLog.entries, ElementsAre ("begin", "value", "end"));

    value.setValueAsString ("1234.5 ms");
    EXPECT_NEAR (getDelay(), 1234.5f, 0.01f);
    EXPECT_EQ (value.getCurrentValueAsString(), "1234.5 ms");

    value.setValue (99999.0);
    EXPECT_EQ (getDelay(), 10000.0f);
}

TEST_F (ShownKnobTest, AScreenReadersStepIsThatOfTheArrowKeys)
{
    auto& value = *knob.getAccessibilityHandler()->getValueInterface();

    for (const auto milliseconds : { 1.0, 30.0, 1000.0, 9000.0 })
    {
        knob.setValue (milliseconds, juce::sendNotificationSync);
        const auto target = value.getCurrentValue() + value.getRange().getInterval();
        press (KeyPress::upKey);
        EXPECT_NEAR (knob.getValue(), target, 1e-3 * milliseconds) << milliseconds;
    }

    press (KeyPress::endKey);
    EXPECT_GT (value.getRange().getInterval(), 0.0);
}
} // namespace
} // namespace cv::varlo
