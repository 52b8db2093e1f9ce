#include "pluginCore/lookAndFeel/LabelPainter.h"

#include "pluginCore/lookAndFeel/LookAndFeel.h"
#include "pluginCore/panels/TooltipDisplayComponent.h"
#include "support/Rendering.h"

#include <gtest/gtest.h>

namespace cv::pluginCore
{
namespace
{
using cv::test::areSame;
using cv::test::getAreaOf;
using cv::test::getGreatestAlpha;
using cv::test::getInkArea;
using cv::test::render;

class LabelTest : public testing::Test
{
protected:
    LabelTest()
    {
        label.setLookAndFeel (&lookAndFeel);
        label.setSize (200, 50);
        label.setColour (juce::Label::textColourId, juce::Colours::white);
    }

    ~LabelTest() override { label.setLookAndFeel (nullptr); }

    float fontHeight() { return lookAndFeel.getLabelFont (label).getHeight(); }

    void setProperty (const char* name, const juce::var& value) { label.getProperties().set (name, value); }

    LookAndFeel lookAndFeel;
    juce::Label label { {}, "HHH" };
};

TEST_F (LabelTest, FontIsFourFifthsOfTheHeight)
{
    EXPECT_FLOAT_EQ (fontHeight(), 40.0f);
    EXPECT_EQ (lookAndFeel.getLabelFont (label).getTypefacePtr(), lookAndFeel.labelFont.getTypefacePtr());
}

TEST_F (LabelTest, BoldOnesAreSemibold)
{
    setProperty ("bold", true);
    EXPECT_FLOAT_EQ (fontHeight(), 40.0f);
    EXPECT_EQ (lookAndFeel.getLabelFont (label).getTypefacePtr(), lookAndFeel.semiBoldFont.getTypefacePtr());

    setProperty ("bold", false);
    EXPECT_EQ (lookAndFeel.getLabelFont (label).getTypefacePtr(), lookAndFeel.regularFont.getTypefacePtr());
}

TEST_F (LabelTest, FontScaleWinsOverTheParents)
{
    juce::Slider slider;
    slider.addAndMakeVisible (label);

    setProperty ("fontScale", 0.3);
    EXPECT_FLOAT_EQ (fontHeight(), 15.0f);

    setProperty ("vertical", true);
    EXPECT_FLOAT_EQ (fontHeight(), 15.0f);

    slider.removeChildComponent (&label);
    EXPECT_FLOAT_EQ (fontHeight(), 15.0f);
}

TEST_F (LabelTest, FontScaleOfZeroOrBelowIsNone)
{
    for (const auto& scale : { juce::var (0.0), juce::var (-1.0), juce::var ("large") })
    {
        setProperty ("fontScale", scale);
        EXPECT_FLOAT_EQ (fontHeight(), 40.0f) << scale.toString();
    }
}

TEST_F (LabelTest, FontInASliderFollowsItsStyle)
{
    juce::Slider slider;
    juce::Component between;
    slider.addAndMakeVisible (between);
    between.addAndMakeVisible (label);

    const auto isVertical = [] (int style)
    {
        return style == juce::Slider::LinearVertical || style == juce::Slider::LinearBarVertical
               || style == juce::Slider::TwoValueVertical || style == juce::Slider::ThreeValueVertical;
    };

    for (auto style = (int) juce::Slider::LinearHorizontal; style <= juce::Slider::ThreeValueVertical; ++style)
    {
        slider.setSliderStyle ((juce::Slider::SliderStyle) style);

        setProperty ("vertical", false);
        EXPECT_FLOAT_EQ (fontHeight(), isVertical (style) ? 30.0f : 45.0f) << style;

        setProperty ("vertical", true);
        EXPECT_FLOAT_EQ (fontHeight(), isVertical (style) ? 120.0f : 180.0f) << style;
    }
}

TEST_F (LabelTest, TurnedTextCountsInSlidersOnly)
{
    setProperty ("vertical", true);
    EXPECT_FLOAT_EQ (fontHeight(), 40.0f);
}

TEST_F (LabelTest, FontInATooltipPanelIsSmaller)
{
    TooltipDisplayComponent panel;
    panel.addAndMakeVisible (label);
    EXPECT_FLOAT_EQ (fontHeight(), 30.0f);
}

TEST_F (LabelTest, TooltipPanelShowsItsText)
{
    TooltipDisplayComponent panel;
    panel.setLookAndFeel (&lookAndFeel);
    panel.setSize (200, 20);
    EXPECT_TRUE (getInkArea (render (panel)).isEmpty());

    panel.setText ("Mix");
    EXPECT_FALSE (getInkArea (render (panel)).isEmpty());
    panel.setLookAndFeel (nullptr);
}

TEST (LabelLinesTest, AreNeverBelowTwo)
{
    EXPECT_EQ (getMaximumLabelLines (0, 20.0f), 2);
    EXPECT_EQ (getMaximumLabelLines (5, 20.0f), 2);
    EXPECT_EQ (getMaximumLabelLines (20, 20.0f), 2);
    EXPECT_EQ (getMaximumLabelLines (59, 20.0f), 2);
    EXPECT_EQ (getMaximumLabelLines (60, 20.0f), 3);
    EXPECT_EQ (getMaximumLabelLines (100, 20.0f), 5);
}

TEST_F (LabelTest, TextLowerThanALineIsBrokenIntoTwo)
{
    label.setText ("HHHH HHHH", juce::dontSendNotification);
    label.setSize (60, 30);
    setProperty ("fontScale", 1.2);

    const auto image = render (label);
    const auto ink = getInkArea (image);
    EXPECT_GT (ink.getHeight(), 20);
    EXPECT_TRUE (getInkArea (image.getClippedImage (ink.withY (ink.getCentreY()).withHeight (1))).isEmpty());
}

TEST_F (LabelTest, TextIsNeverSqueezedNorIndented)
{
    label.setText ("A text that is far too long for it", juce::dontSendNotification);
    const auto image = render (label);

    label.setMinimumHorizontalScale (0.1f);
    EXPECT_TRUE (areSame (render (label), image));

    label.setBorderSize (juce::BorderSize<int> (9));
    EXPECT_TRUE (areSame (render (label), image));
    EXPECT_EQ (lookAndFeel.getLabelBorderSize (label), juce::BorderSize<int> (0));
}

TEST_F (LabelTest, IsFramedInItsOutlineColourOneUnitWide)
{
    label.setText ({}, juce::dontSendNotification);
    label.setColour (juce::Label::backgroundColourId, juce::Colours::blue);
    label.setColour (juce::Label::outlineColourId, juce::Colours::red);

    const auto image = render (label);
    EXPECT_EQ (getAreaOf (image, juce::Colours::red), juce::Rectangle (0, 0, 200, 50));
    EXPECT_EQ (getAreaOf (image, juce::Colours::blue), juce::Rectangle (1, 1, 198, 48));
    EXPECT_EQ (image.getPixelAt (100, 0), juce::Colours::red);
    EXPECT_EQ (image.getPixelAt (100, 1), juce::Colours::blue);
    EXPECT_EQ (image.getPixelAt (100, 49), juce::Colours::red);
    EXPECT_EQ (image.getPixelAt (0, 25), juce::Colours::red);
    EXPECT_EQ (image.getPixelAt (199, 25), juce::Colours::red);
}

TEST_F (LabelTest, DisabledOneIsDimmedToTwoFifths)
{
    label.setColour (juce::Label::outlineColourId, juce::Colours::red);
    const juce::Rectangle inside (2, 2, 196, 46);

    const auto image = render (label);
    EXPECT_EQ (getGreatestAlpha (image, inside), 255);
    EXPECT_EQ (image.getPixelAt (0, 0).getAlpha(), 255);

    label.setEnabled (false);
    const auto disabledImage = render (label);
    EXPECT_NEAR (getGreatestAlpha (disabledImage, inside), 102, 1);
    EXPECT_EQ (disabledImage.getPixelAt (0, 0).getAlpha(), 102);
}

TEST_F (LabelTest, DisabledOneKeepsItsColoursOwnAlpha)
{
    label.setEnabled (false);
    label.setColour (juce::Label::textColourId, juce::Colours::white.withAlpha ((juce::uint8) 128));
    EXPECT_NEAR (getGreatestAlpha (render (label), label.getLocalBounds()), 51, 1);
}

/** A label on the desktop, where it can be edited. */
class EditedLabelTest : public LabelTest
{
protected:
    void SetUp() override
    {
        ASSERT_FALSE (juce::Desktop::getInstance().getDisplays().displays.isEmpty()) << "This needs a display.";

        label.setColour (juce::Label::outlineColourId, juce::Colours::red);
        label.setColour (juce::Label::backgroundColourId, juce::Colours::blue);
        label.addToDesktop (0);
        label.setVisible (true);
        label.showEditor();
        ASSERT_TRUE (label.isBeingEdited());
    }

    /** The label's own drawing, without the text editor's. */
    juce::Image draw()
    {
        return render (200, 50, [&] (juce::Graphics& g) { lookAndFeel.drawLabel (g, label); });
    }
};

TEST_F (EditedLabelTest, HasAFrameButNoText)
{
    const auto image = draw();
    EXPECT_EQ (getAreaOf (image, juce::Colours::red), juce::Rectangle (0, 0, 200, 50));
    EXPECT_TRUE (getAreaOf (image, juce::Colours::white).isEmpty());
}

TEST_F (EditedLabelTest, HasNoFrameWhenDisabled)
{
    label.setEnabled (false);
    ASSERT_TRUE (label.isBeingEdited());
    EXPECT_EQ (getAreaOf (draw(), juce::Colours::blue), juce::Rectangle (0, 0, 200, 50));
    EXPECT_TRUE (getAreaOf (draw(), juce::Colours::red).isEmpty());
    EXPECT_EQ (draw().getPixelAt (0, 0), juce::Colours::blue);
}
} // namespace
} // namespace cv::pluginCore
