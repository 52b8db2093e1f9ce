#include "varlo/controls/LabelledSlider.h"

#include "support/FindComponent.h"
#include "support/MessageLoop.h"
#include "support/ProcessorHarness.h"

#include <gtest/gtest.h>

#include <random>

namespace cv::varlo
{
namespace
{
using cv::test::findComponent;
using cv::test::ProcessorHarness;
using cv::test::runMessageLoopUntil;
using Area = juce::Rectangle<int>;

class LabelledSliderTest : public testing::Test
{
protected:
    ProcessorHarness harness;
    juce::AudioProcessorValueTreeState& state = harness.processor.getValueTreeState();
    LabelledSlider knob { state, "delay", "Delay" };
    juce::Slider& slider = *findComponent<juce::Slider> (knob);
    juce::Label& caption = *findComponent<juce::Label> (knob, [] (auto& label) { return label.getText() == "Delay"; });
};

TEST_F (LabelledSliderTest, IsAKnobWithACaption)
{
    EXPECT_EQ (slider.getSliderStyle(), juce::Slider::RotaryVerticalDrag);
    EXPECT_EQ (slider.getTextBoxPosition(), juce::Slider::TextBoxBelow);
    EXPECT_EQ (caption.getName(), "");
    EXPECT_EQ (caption.getJustificationType(), juce::Justification::centred);
    EXPECT_TRUE (slider.isVisible());
    EXPECT_TRUE (caption.isVisible());
}

TEST_F (LabelledSliderTest, TheKnobTakesSevenTenthsOfTheHeight)
{
    struct Row
    {
        Area size, slider, caption;
    };

    for (const auto& row :
         { Row { { 130, 139 }, { 0, 0, 130, 97 }, { 0, 97, 130, 42 } },
           Row { { 1, 1 }, { 0, 0, 1, 0 }, { 0, 0, 1, 1 } }, Row { { 0, 0 }, { 0, 0, 0, 0 }, { 0, 0, 0, 0 } },
           Row { { 100, 100 }, { 0, 0, 100, 70 }, { 0, 70, 100, 30 } },
           Row { { 10, 1000 }, { 0, 0, 10, 700 }, { 0, 700, 10, 300 } },
           Row { { 5000, 3 }, { 0, 0, 5000, 2 }, { 0, 2, 5000, 1 } } })
    {
        knob.setBounds (row.size);
        EXPECT_EQ (slider.getBounds(), row.slider) << row.size.toString();
        EXPECT_EQ (caption.getBounds(), row.caption) << row.size.toString();
    }
}

TEST_F (LabelledSliderTest, NothingIsNegativeInAnySize)
{
    std::mt19937 random (1);

    for (auto i = 0; i < 10000; ++i)
    {
        knob.setSize ((int) (random() % 3000), (int) (random() % 3000));
        ASSERT_GE (slider.getHeight(), 0);
        ASSERT_GE (caption.getHeight(), 0);
        ASSERT_EQ (slider.getHeight() + caption.getHeight(), knob.getHeight());
    }
}

TEST_F (LabelledSliderTest, ShowsTheParametersRangeValueAndText)
{
    EXPECT_EQ (slider.getMinimum(), 1.0);
    EXPECT_EQ (slider.getMaximum(), 10000.0);
    EXPECT_NEAR (slider.getValue(), 1000.0, 1e-3);
    EXPECT_EQ (slider.getTextFromValue (slider.getValue()), "1000.0 ms");
    EXPECT_TRUE (slider.isDoubleClickReturnEnabled());
    EXPECT_NEAR (slider.getDoubleClickReturnValue(), 1000.0, 1e-3);
}

TEST_F (LabelledSliderTest, MovesTheParameterAndFollowsIt)
{
    slider.setValue (250.0, juce::sendNotificationSync);
    EXPECT_NEAR (harness.parameter ("delay").get(), 250.0f, 0.01f);

    harness.set ("delay", 2000.0f);
    EXPECT_TRUE (runMessageLoopUntil ([this] { return std::abs (slider.getValue() - 2000.0) < 0.1; }));
}

TEST_F (LabelledSliderTest, TextThatIsNoNumberTurnsTheKnobDown)
{
    for (const auto* const text : { "nan", "-NaN ms", "no number" })
    {
        slider.setValue (250.0, juce::sendNotificationSync);
        slider.setValue (slider.getValueFromText (text), juce::sendNotificationSync);
        EXPECT_EQ (slider.getValue(), 1.0) << text;
        EXPECT_EQ (harness.parameter ("delay").get(), 1.0f) << text;
    }

    slider.setValue (slider.getValueFromText ("inf"), juce::sendNotificationSync);
    EXPECT_EQ (harness.parameter ("delay").get(), 10000.0f);
}

TEST_F (LabelledSliderTest, NoNumberFromTheHostLeavesTheKnobUsable)
{
#if JUCE_DEBUG
    GTEST_SKIP() << "JUCE's range asserts on what it limits; builds without assertions check this.";
#else
    juce::AudioProcessorParameter& parameter = harness.parameter ("delay");
    parameter.setValueNotifyingHost (std::numeric_limits<float>::quiet_NaN());
    EXPECT_EQ (slider.getValue(), 1.0);
    EXPECT_EQ (slider.getTextFromValue (slider.getValue()), "1.0 ms");

    slider.setValue (250.0, juce::sendNotificationSync);
    EXPECT_NEAR (harness.parameter ("delay").get(), 250.0f, 0.01f);
#endif
}

TEST_F (LabelledSliderTest, ChangesCanBeUndone)
{
    auto& undoManager = harness.processor.getUndoManager();
    state.copyState(); // takes over what the tree doesn't know yet
    undoManager.beginNewTransaction();

    slider.setValue (250.0, juce::sendNotificationSync);
    state.copyState();
    EXPECT_TRUE (undoManager.canUndo());
    EXPECT_TRUE (undoManager.undo());
    EXPECT_NEAR (harness.parameter ("delay").get(), 1000.0f, 0.01f);
}

TEST_F (LabelledSliderTest, WithoutAParameterItMovesNothing)
{
    LabelledSlider loose (state, "nothing of the kind", "Loose");
    auto& looseSlider = *findComponent<juce::Slider> (loose);
    looseSlider.setValue (5.0, juce::sendNotificationSync);
    EXPECT_EQ (looseSlider.getValue(), 5.0);
    EXPECT_FLOAT_EQ (harness.parameter ("delay").get(), 1000.0f);
}
} // namespace
} // namespace cv::varlo
