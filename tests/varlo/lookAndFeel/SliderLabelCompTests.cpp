#include "varlo/lookAndFeel/SliderLabelComp.h"

#include "support/Mouse.h"
#include "varlo/lookAndFeel/PluginLookAndFeel.h"

#include <gtest/gtest.h>

namespace cv::varlo
{
namespace
{
using Slider = juce::Slider;

const juce::Colour textColour (0xff112233), background (0xff445566), outline (0xff778899), highlight (0x80aabbcc);

TEST (SliderLabelCompTest, TakesTheSlidersColoursAlsoInheritedOnes)
{
    PluginLookAndFeel look;
    juce::Component parent;
    Slider slider;
    parent.addAndMakeVisible (slider);
    parent.setColour (Slider::textBoxTextColourId, textColour);
    parent.setColour (Slider::textBoxBackgroundColourId, background);
    slider.setColour (Slider::textBoxOutlineColourId, outline);
    slider.setColour (Slider::textBoxHighlightColourId, highlight);

    const std::pair<int, juce::Colour> expected[] {
        { juce::Label::textColourId, textColour },
        { juce::Label::backgroundColourId, background },
        { juce::Label::textWhenEditingColourId, textColour },
        { juce::Label::outlineColourId, outline },
        { juce::Label::backgroundWhenEditingColourId, background },
        { juce::TextEditor::textColourId, textColour },
        { juce::TextEditor::outlineColourId, outline },
        { juce::TextEditor::focusedOutlineColourId, outline },
        { juce::TextEditor::highlightColourId, highlight },
        { juce::TextEditor::highlightedTextColourId, highlight.contrasting (0.8f) },
    };

    const std::unique_ptr<juce::Label> label (look.createSliderTextBox (slider));
    ASSERT_NE (dynamic_cast<PluginLookAndFeel::SliderLabelComp*> (label.get()), nullptr);

    for (const auto& [id, colour] : expected)
    {
        EXPECT_TRUE (label->isColourSpecified (id)) << std::hex << id;
        EXPECT_EQ (label->findColour (id), colour) << std::hex << id;
    }
}

TEST (SliderLabelCompTest, FollowsTheSlidersStyle)
{
    for (auto style = (int) Slider::LinearHorizontal; style <= Slider::ThreeValueVertical; ++style)
    {
        Slider slider ((Slider::SliderStyle) style, Slider::TextBoxBelow);
        slider.setColour (Slider::textBoxBackgroundColourId, background);
        slider.setTooltip ("Feedback");

        const auto isHorizontal = style == Slider::LinearHorizontal || style == Slider::LinearBar
                                  || style == Slider::TwoValueHorizontal || style == Slider::ThreeValueHorizontal;
        const auto isBar = style == Slider::LinearBar || style == Slider::LinearBarVertical;

        SliderLabelComp label (slider);
        EXPECT_EQ (label.getJustificationType(),
                   isHorizontal ? juce::Justification::centredRight : juce::Justification::centred)
            << style;
        EXPECT_EQ (label.findColour (juce::Label::backgroundColourId),
                   isBar ? juce::Colours::transparentBlack : background)
            << style;
        EXPECT_EQ (label.getTooltip(), "Feedback");
    }
}

TEST (SliderLabelCompTest, EditorIsCentredOnTheLineWithoutABorder)
{
    PluginLookAndFeel look;
    Slider slider (Slider::RotaryVerticalDrag, Slider::TextBoxBelow);
    slider.setTooltip ("Feedback");
    SliderLabelComp label (slider);
    label.setLookAndFeel (&look);
    slider.addAndMakeVisible (label);
    label.setSize (100, 24);

    const std::unique_ptr<juce::TextEditor> editor (label.createEditorComponent());
    EXPECT_EQ (editor->getBorder(), juce::BorderSize<int> (0));
    EXPECT_EQ (editor->getJustificationType(), juce::Justification::centred);
    EXPECT_EQ (editor->getTooltip(), "Feedback");
    EXPECT_EQ (editor->getLeftIndent(), 4);
    EXPECT_EQ (editor->getTopIndent(), 3) << "24 logical pixels and a font of 18";
    EXPECT_FLOAT_EQ (editor->getFont().getHeight(), 18.0f);
    label.setLookAndFeel (nullptr);
}

/** Counts how often all of a component is asked to be painted anew. */
struct RepaintCounter final : juce::CachedComponentImage
{
    explicit RepaintCounter (int& counter) : count (counter) {}

    void paint (juce::Graphics&) override {}

    bool invalidateAll() override
    {
        ++count;
        return true;
    }

    bool invalidate (const juce::Rectangle<int>&) override { return true; }

    void releaseResources() override {}

    int& count;
};

/** A slider of 100 by 100 logical pixels in a window, with the look's text box, and other controls beside it. */
class SliderTextBoxMouseTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_FALSE (juce::Desktop::getInstance().getDisplays().displays.isEmpty()) << "This needs a display.";

        slider.setLookAndFeel (&look);
        window.setBounds (20, 20, 300, 300);
        slider.setBounds (0, 0, 100, 100);
        slider.setRange (0.0, 100.0);
        slider.setValue (50.0, juce::dontSendNotification);
        window.addAndMakeVisible (slider);
        window.addToDesktop (0);
        window.setVisible (true);
        test::sendMouse (window, { 250.0f, 250.0f }, false);
    }

    void TearDown() override
    {
        test::sendMouse (window, { 250.0f, 250.0f }, false);
        slider.setLookAndFeel (nullptr);
    }

    SliderLabelComp& textBox()
    {
        for (auto* const child : slider.getChildren())
            if (auto* const label = dynamic_cast<SliderLabelComp*> (child))
                return *label;

        throw std::runtime_error ("The slider has no such text box.");
    }

    void drag (juce::Point<float> distance)
    {
        const auto start = textBox().getLocalBounds().toFloat().getCentre();
        test::sendMouse (textBox(), start, false);
        test::sendMouse (textBox(), start, true);
        test::sendMouse (textBox(), start + distance * 0.5f, true);
        test::sendMouse (textBox(), start + distance, true);
        test::sendMouse (textBox(), start + distance, false);
    }

    void click()
    {
        test::moveMouseTo (textBox());
        test::pressMouseOn (textBox());
        test::releaseMouseOn (textBox());
    }

    void turnWheel (float amount)
    {
        test::moveMouseTo (textBox());
        auto* const peer = window.getPeer();
        peer->handleMouseWheel (juce::MouseInputSource::InputSourceType::mouse,
                                window.getLocalPoint (&textBox(), textBox().getLocalBounds().getCentre()).toFloat(),
                                juce::Time::currentTimeMillis(), { 0.0f, amount, false, false, false });
    }

    int numDragsEnded = 0;
    PluginLookAndFeel look;
    juce::Component window;
    Slider slider { Slider::RotaryVerticalDrag, Slider::TextBoxBelow };
};

TEST_F (SliderTextBoxMouseTest, DraggingTheValueTurnsTheKnob)
{
    drag ({ 0.0f, -40.0f });
    EXPECT_GT (slider.getValue(), 55.0);
    EXPECT_FALSE (textBox().isBeingEdited());

    const auto turned = slider.getValue();
    drag ({ 0.0f, 40.0f });
    EXPECT_LT (slider.getValue(), turned);
}

TEST_F (SliderTextBoxMouseTest, ClickingTheValueTypesOne)
{
    slider.onDragEnd = [&] { ++numDragsEnded; };

    click();
    ASSERT_TRUE (textBox().isBeingEdited());
    EXPECT_EQ (textBox().getCurrentTextEditor()->getKeyboardType(), juce::TextInputTarget::decimalKeyboard);
    EXPECT_EQ (slider.getValue(), 50.0);
    EXPECT_EQ (numDragsEnded, 1) << "the slider has heard of the release";

    textBox().getCurrentTextEditor()->setText ("70");
    textBox().hideEditor (false);
    EXPECT_EQ (slider.getValue(), 70.0);
}

TEST_F (SliderTextBoxMouseTest, ClickTypesNothingWhereValuesCantBeTyped)
{
    slider.setTextBoxIsEditable (false);
    click();
    EXPECT_FALSE (textBox().isBeingEdited());

    slider.setTextBoxIsEditable (true);
    slider.setEnabled (false);
    click();
    EXPECT_FALSE (textBox().isBeingEdited());
    EXPECT_EQ (slider.getValue(), 50.0);
}

TEST_F (SliderTextBoxMouseTest, WheelOnTheValueTurnsTheKnob)
{
    turnWheel (0.5f);
    EXPECT_GT (slider.getValue(), 50.0);
}

TEST_F (SliderTextBoxMouseTest, LinearSlidersKeepTheirTextBoxToThemselves)
{
    slider.setSliderStyle (Slider::LinearHorizontal);
    slider.setBounds (0, 0, 200, 30);
    ASSERT_EQ (textBox().getBounds(), juce::Rectangle (160, 0, 40, 30));

    drag ({ -100.0f, 0.0f });
    turnWheel (0.5f);
    EXPECT_EQ (slider.getValue(), 50.0);
    EXPECT_FALSE (textBox().isBeingEdited());

    click();
    EXPECT_TRUE (textBox().isBeingEdited());
}

TEST_F (SliderTextBoxMouseTest, EveryRotaryStyleTurns)
{
    for (const auto style : { Slider::Rotary, Slider::RotaryHorizontalDrag, Slider::RotaryVerticalDrag,
                              Slider::RotaryHorizontalVerticalDrag })
    {
        slider.setSliderStyle (style);
        slider.setValue (50.0, juce::dontSendNotification);
        drag ({ 30.0f, -30.0f });
        EXPECT_NE (slider.getValue(), 50.0) << (int) style;
    }
}

TEST_F (SliderTextBoxMouseTest, KnobIsDrawnAnewWhenTheMouseComesAndGoes)
{
    for (const auto style : { Slider::RotaryVerticalDrag, Slider::LinearHorizontal })
    {
        slider.setSliderStyle (style);
        auto numRepaints = 0;
        slider.setCachedComponentImage (new RepaintCounter (numRepaints));

        test::moveMouseTo (textBox());
        EXPECT_GE (numRepaints, 1);

        numRepaints = 0;
        test::sendMouse (window, { 250.0f, 250.0f }, false);
        EXPECT_GE (numRepaints, 1);
        slider.setCachedComponentImage (nullptr);
    }
}

TEST_F (SliderTextBoxMouseTest, KnobIsBrighterUnderTheMouseAlsoOnItsText)
{
    const auto colourAtLeft = [&]
    {
        const auto image = slider.createComponentSnapshot (slider.getLocalBounds(), true, 1.0f);
        return image.getPixelAt (5, 50);
    };

    const auto thumb = look.findColour (Slider::thumbColourId);
    EXPECT_EQ (colourAtLeft(), thumb);

    test::moveMouseTo (textBox());
    EXPECT_EQ (colourAtLeft(), thumb.brighter (0.06f));

    slider.setEnabled (false);
    EXPECT_NEAR (colourAtLeft().getAlpha(), 198, 2) << "half of an arc on half of a ring on a tenth of a shadow";
}
} // namespace
} // namespace cv::varlo
