#include "varlo/lookAndFeel/SheenLabelPainter.h"

#include "support/PresetSandbox.h"
#include "support/Rendering.h"
#include "support/TemporaryHome.h"
#include "support/TestProduct.h"
#include "varlo/controls/LabelledSlider.h"
#include "varlo/lookAndFeel/PluginLookAndFeel.h"

#include <gtest/gtest.h>

namespace cv::varlo
{
namespace
{
using test::areSame;
using test::getAreaOf;
using test::getGreatestAlpha;
using test::getInkArea;
using test::render;
using Area = juce::Rectangle<int>;

const juce::Colour text (0xffcfcfcf), bright (0xffd3d3d3), dark (0xff818181);

TEST (SheenTest, FallsFromBrightToDark)
{
    const auto sheen = makeSheen (text, 10.0f, 50.0f, 1.0);
    EXPECT_FALSE (sheen.isRadial);
    EXPECT_EQ (sheen.point1, juce::Point (0.0f, 10.0f));
    EXPECT_EQ (sheen.point2, juce::Point (0.0f, 50.0f));
    ASSERT_EQ (sheen.getNumColours(), 2);
    EXPECT_EQ (sheen.getColour (0), bright);
    EXPECT_EQ (sheen.getColour (1), dark);
    EXPECT_EQ (sheen.getColour (0), text.brighter (0.1f));
    EXPECT_EQ (sheen.getColour (1), text.darker (0.6f));
}

TEST (SheenTest, StaysBrightDownToAProportion)
{
    const auto sheen = makeSheen (text, 0.0f, 40.0f, 0.75);
    ASSERT_EQ (sheen.getNumColours(), 3);
    EXPECT_EQ (sheen.getColourPosition (1), 0.75);
    EXPECT_EQ (sheen.getColour (1), bright);
    EXPECT_EQ (sheen.getColourAtPosition (0.7), bright);
    EXPECT_EQ (sheen.getColourAtPosition (1.0), dark);
}

TEST (SheenTest, ProportionsFromOneOnAddNoStop)
{
    for (const auto proportion : { 1.0, 1.5, 100.0 })
        EXPECT_EQ (makeSheen (text, 0.0f, 40.0f, proportion).getNumColours(), 2) << proportion;

    for (const auto proportion : { 0.0, -1.0 })
        EXPECT_EQ (makeSheen (text, 0.0f, 40.0f, proportion).getColourAtPosition (0.5),
                   makeSheen (text, 0.0f, 40.0f, 1.0).getColourAtPosition (0.5))
            << proportion;
}

TEST (SheenTest, KeepsTheAlpha)
{
    const auto sheen = makeSheen (text.withAlpha ((juce::uint8) 100), 0.0f, 40.0f, 0.5);
    for (auto i = 0; i < 3; ++i)
        EXPECT_EQ (sheen.getColour (i).getAlpha(), 100);
}

TEST (SheenLabelLinesTest, AreAtLeastOne)
{
    EXPECT_EQ (getSheenLabelLines (0, 20.0f), 1);
    EXPECT_EQ (getSheenLabelLines (39, 20.0f), 1);
    EXPECT_EQ (getSheenLabelLines (40, 20.0f), 2);
    EXPECT_EQ (getSheenLabelLines (100, 20.0f), 5);
}

class SheenLabelTest : public testing::Test
{
protected:
    SheenLabelTest()
    {
        label.setLookAndFeel (&look);
        label.setSize (200, 100);
    }

    ~SheenLabelTest() override { label.setLookAndFeel (nullptr); }

    juce::Image draw (float scale = 1.0f)
    {
        return render (juce::roundToInt (200.0f * scale), juce::roundToInt (100.0f * scale),
                       [&] (juce::Graphics& g)
                       {
                           g.addTransform (juce::AffineTransform::scale (scale));
                           look.drawLabel (g, label);
                       });
    }

    /** The grey of the text in a row, where it fully covers a pixel; -1 if it doesn't. */
    static int greyInRow (const juce::Image& image, int row)
    {
        for (auto x = 0; x < image.getWidth(); ++x)
            if (image.getPixelAt (x, row).getAlpha() == 255)
                return image.getPixelAt (x, row).getRed();

        return -1;
    }

    PluginLookAndFeel look;
    juce::Label label { {}, "HHH" };
};

TEST_F (SheenLabelTest, TextIsBrightAtItsTopAndDarkAtItsBottom)
{
    for (const auto scale : { 1, 2 })
    {
        const auto image = draw ((float) scale);

        for (const auto row : { 30, 45, 60 })
        {
            const auto expected = 211.0 + (129.0 - 211.0) * (row + 0.5) / 100.0;
            EXPECT_NEAR (greyInRow (image, row * scale), expected, 2.0) << row << " at " << scale;
        }
    }
}

TEST_F (SheenLabelTest, TextIsBrightDownToTheProportionThatThePropertySays)
{
    label.getProperties().set ("gradYProp", 0.5);
    const auto image = draw();
    EXPECT_NEAR (greyInRow (image, 30), 211, 1);
    EXPECT_NEAR (greyInRow (image, 48), 211, 1);
    EXPECT_NEAR (greyInRow (image, 60), 211.0 - 82.0 * 0.21, 2.0);

    label.getProperties().set ("gradYProp", 1.0);
    const auto full = draw();
    label.getProperties().remove ("gradYProp");
    EXPECT_TRUE (areSame (draw(), full)) << "both fall off all the way";
}

TEST_F (SheenLabelTest, DisabledOneIsHalfTransparent)
{
    label.setColour (juce::Label::outlineColourId, juce::Colours::red);
    label.setEnabled (false);
    EXPECT_EQ (getGreatestAlpha (draw(), { 2, 2, 196, 96 }), 128);
    EXPECT_EQ (draw().getPixelAt (0, 0), test::asDrawn (juce::Colours::red.withAlpha (0.5f)));

    label.setColour (juce::Label::textColourId, text.withAlpha ((juce::uint8) 101));
    EXPECT_NEAR (getGreatestAlpha (draw(), { 2, 2, 196, 96 }), 50, 1);
}

TEST_F (SheenLabelTest, IsFramedOnItsBackground)
{
    label.setText ({}, juce::dontSendNotification);
    label.setColour (juce::Label::backgroundColourId, juce::Colours::blue);
    label.setColour (juce::Label::outlineColourId, juce::Colours::red);
    EXPECT_EQ (getAreaOf (draw(), juce::Colours::red), Area (0, 0, 200, 100));
    EXPECT_EQ (getAreaOf (draw(), juce::Colours::blue), Area (1, 1, 198, 98));
}

TEST_F (SheenLabelTest, TextIsSqueezedAsFarAsTheLabelAllows)
{
    label.setText ("A text that is rather long for it", juce::dontSendNotification);
    label.setMinimumHorizontalScale (1.0f);
    const auto cut = draw();
    label.setMinimumHorizontalScale (0.1f);
    EXPECT_FALSE (areSame (draw(), cut));
}

TEST_F (SheenLabelTest, IsDrawnInAnySize)
{
    for (const auto size : { 0, 1, 3 })
    {
        label.setSize (size, size);
        EXPECT_LE (getInkArea (draw()).getWidth(), 3);
    }
}

TEST_F (SheenLabelTest, FontFollowsTheHeightAndTheParent)
{
    const auto height = [&] { return look.getLabelFont (label).getHeight(); };
    EXPECT_FLOAT_EQ (height(), 80.0f);
    EXPECT_EQ (look.getLabelFont (label).getTypefacePtr(), look.mediumFont.getTypefacePtr());

    juce::Slider slider;
    juce::Component between;
    slider.addAndMakeVisible (between);
    between.addAndMakeVisible (label);
    EXPECT_FLOAT_EQ (height(), 75.0f);

    const test::TemporaryHome home;
    const test::PresetSandbox sandbox;
    test::TestProduct product (sandbox.getLocations());
    LabelledSlider labelledSlider (product.getValueTreeState(), "level", {});
    labelledSlider.addAndMakeVisible (between);
    EXPECT_FLOAT_EQ (height(), 50.0f);

    slider.addAndMakeVisible (between);
    labelledSlider.addAndMakeVisible (slider);
    EXPECT_FLOAT_EQ (height(), 75.0f) << "the slider counts first";
}

/** A label on the desktop, where it can be edited. */
class EditedSheenLabelTest : public SheenLabelTest
{
protected:
    void SetUp() override
    {
        ASSERT_FALSE (juce::Desktop::getInstance().getDisplays().displays.isEmpty()) << "This needs a display.";

        label.setColour (juce::Label::outlineColourId, juce::Colours::red);
        label.addToDesktop (0);
        label.setVisible (true);
        label.showEditor();
        ASSERT_TRUE (label.isBeingEdited());
    }
};

TEST_F (EditedSheenLabelTest, HasAFrameButNoText)
{
    EXPECT_EQ (getAreaOf (draw(), juce::Colours::red), Area (0, 0, 200, 100));
    EXPECT_EQ (getGreatestAlpha (draw(), { 2, 2, 196, 96 }), 0);
}

TEST_F (EditedSheenLabelTest, DisabledOneLosesTheFramesColour)
{
    label.setEnabled (false);
    ASSERT_TRUE (label.isBeingEdited());
    EXPECT_TRUE (getAreaOf (draw(), juce::Colours::red).isEmpty());
    EXPECT_EQ (getAreaOf (draw(), juce::Colours::black), Area (0, 0, 200, 100)) << "in the colour that was set before";
}
} // namespace
} // namespace cv::varlo
