#include "pluginCore/lookAndFeel/LookAndFeel.h"

#include "pluginCore/editor/PluginHeaderComponent.h"
#include "pluginCore/lookAndFeel/ScrollBarAndTreePainter.h"
#include "support/FrameworkLookAndFeel.h"
#include "support/PresetSandbox.h"
#include "support/Rendering.h"
#include "support/TemporaryHome.h"
#include "support/TestProduct.h"

#include <gtest/gtest.h>

#include <random>

namespace cv::pluginCore
{
namespace
{
using cv::test::getAreaOf;
using cv::test::getInkArea;
using cv::test::render;
using Area = juce::Rectangle<int>;

TEST (LookAndFeelTest, SetsTheColoursOfTheFrameworksPanels)
{
    const std::vector<std::pair<int, juce::uint32>> colours {
        { LookAndFeel::changeLogBackgroundColourId, 0xff111111 },
        { LookAndFeel::changeLogTextColourId, 0xffeeeeee },
        { LookAndFeel::displayTextBackgroundColourId, 0xff0c0c0c },
        { LookAndFeel::displayTextTextColourId, 0xffeeeeee },
        { LookAndFeel::panelBackgroundColourId, 0xff111111 },
        { LookAndFeel::panelDimTextColourId, 0xffaaaaaa },
        { LookAndFeel::panelTextColourId, 0xfff2f2f2 },
        { LookAndFeel::panelWarningColourId, 0xfff08080 },
        { LookAndFeel::panelDarkBackgroundColourId, 0xff0c0c0c },
        { juce::DrawableButton::backgroundColourId, 0x00000000 },
        { juce::DrawableButton::backgroundOnColourId, 0x00000000 },
        { LookAndFeel::headerBackgroundColourId, 0xff111111 },
        { LookAndFeel::controlPanelColourId, 0xff111111 },
        { LookAndFeel::controlPanelTextColourId, juce::Colour (0xff111111).contrasting (0.7f).getARGB() },
        { LookAndFeel::presetsBarBackgroundColourId, 0xff111111 },
    };

    const LookAndFeel lookAndFeel;

    for (const auto& [id, argb] : colours)
    {
        EXPECT_TRUE (lookAndFeel.isColourSpecified (id)) << std::hex << id;
        EXPECT_EQ (lookAndFeel.findColour (id).getARGB(), argb) << std::hex << id;
    }
}

TEST (LookAndFeelTest, ColourIdentifiersKeepTheirNumbers)
{
    EXPECT_EQ ((int) LookAndFeel::changeLogBackgroundColourId, 0xc89320);
    EXPECT_EQ ((int) LookAndFeel::displayTextBackgroundColourId, 0xcbdef31);
    EXPECT_EQ ((int) LookAndFeel::panelBackgroundColourId, 0xc32aada);
    EXPECT_EQ ((int) LookAndFeel::panelDarkBackgroundColourId, 0x6780200);
    EXPECT_EQ ((int) LookAndFeel::headerBackgroundColourId, 0xc324433);
    EXPECT_EQ ((int) LookAndFeel::controlPanelColourId, 0xc321192);
    EXPECT_EQ ((int) LookAndFeel::presetsBarBackgroundColourId, 0xc19910);
}

TEST (LookAndFeelTest, StartsWithASmallEditorAndTheSharedFonts)
{
    LookAndFeel lookAndFeel;
    const LookAndFeel other;
    EXPECT_EQ (lookAndFeel.editorWidth, 100);
    EXPECT_EQ (lookAndFeel.editorHeight, 100);

    EXPECT_EQ (lookAndFeel.fonts, other.fonts);
    EXPECT_EQ (lookAndFeel.regularFont, lookAndFeel.fonts->regular);
    EXPECT_EQ (lookAndFeel.semiBoldFont, lookAndFeel.fonts->semiBold);
    EXPECT_EQ (lookAndFeel.boldFont, lookAndFeel.fonts->bold);
    EXPECT_EQ (lookAndFeel.monoFont, lookAndFeel.fonts->mono);
    EXPECT_EQ (lookAndFeel.labelFont, lookAndFeel.fonts->regular);
    EXPECT_EQ (lookAndFeel.labelBoldFont, lookAndFeel.fonts->semiBold);
    EXPECT_EQ (lookAndFeel.spareFont.getHeight(), 14.0f);
    EXPECT_EQ (lookAndFeel.getPopupMenuFont(), lookAndFeel.labelFont);
}

class TextButtonFontTest : public testing::Test
{
protected:
    /** The height for a button that may be lower or wider at the moment. */
    float heightAt (int buttonHeight) { return lookAndFeel.getTextButtonFont (button, buttonHeight).getHeight(); }

    LookAndFeel lookAndFeel;
    juce::TextButton button { "proceed" };
};

TEST_F (TextButtonFontTest, IsSevenTenthsOfTheHeightWhereTheTextFits)
{
    button.setSize (1000, 30);
    EXPECT_FLOAT_EQ (heightAt (30), 21.0f);
    EXPECT_FLOAT_EQ (heightAt (100), 70.0f);
    EXPECT_EQ (lookAndFeel.getTextButtonFont (button, 30).getTypefacePtr(), lookAndFeel.labelFont.getTypefacePtr());
}

TEST_F (TextButtonFontTest, ShrinksWithTheWidth)
{
    const auto textWidth =
        juce::GlyphArrangement::getStringWidthInt (lookAndFeel.labelFont.withHeight (30.0f), button.getButtonText());

    // As wide as the text: nine tenths would be 27, and 21 is the limit.
    button.setSize (textWidth, 30);
    EXPECT_FLOAT_EQ (heightAt (30), 21.0f);

    button.setSize (textWidth / 2, 30);
    const auto fitting = std::floor ((float) (textWidth / 2) / (float) textWidth * 30.0f);
    EXPECT_FLOAT_EQ (heightAt (30), 0.9f * fitting);
    EXPECT_LT (fitting, 16.0f);
}

TEST_F (TextButtonFontTest, DependsOnTheHeightAloneInTheHeader)
{
    const cv::test::FrameworkLookAndFeel headerColours;
    const cv::test::TemporaryHome home;
    const cv::test::PresetSandbox sandbox;
    cv::test::TestProduct product (sandbox.getLocations());
    PluginHeaderComponent header (product.getPresetsManager(), nullptr);
    juce::Component between;
    header.addAndMakeVisible (between);
    between.addAndMakeVisible (button);

    for (const auto width : { 0, 10, 1000 })
    {
        button.setSize (width, 30);
        EXPECT_FLOAT_EQ (heightAt (30), 24.0f);
        EXPECT_FLOAT_EQ (heightAt (11), 8.8f);
        EXPECT_FLOAT_EQ (heightAt (9), 8.0f);
        EXPECT_FLOAT_EQ (heightAt (0), 8.0f);
    }

    EXPECT_EQ (lookAndFeel.getTextButtonFont (button, 30).getTypefacePtr(), lookAndFeel.labelFont.getTypefacePtr());
}

class ScrollBarTest : public testing::Test
{
protected:
    ScrollBarTest()
    {
        bar.setColour (juce::ScrollBar::thumbColourId, colour);
        bar.setAutoHide (false);
        bar.setRangeLimits (0.0, 100.0, juce::dontSendNotification);
        bar.setCurrentRange (10.0, 30.0, juce::dontSendNotification);
    }

    juce::Image draw (bool isVertical, int thumbSize, bool isMouseOver = false, bool isMouseDown = false)
    {
        return render (100, 100,
                       [&] (juce::Graphics& g)
                       {
                           lookAndFeel.drawScrollbar (g, bar, isVertical ? 5 : 0, isVertical ? 0 : 5,
                                                      isVertical ? 20 : 100, isVertical ? 100 : 20, isVertical, 10,
                                                      thumbSize, isMouseOver, isMouseDown);
                       });
    }

    const juce::Colour colour { 0xff204060 };
    LookAndFeel lookAndFeel;
    juce::ScrollBar bar { true };
};

TEST_F (ScrollBarTest, ThumbIsRoundedAndOneUnitInsideItsRoom)
{
    const auto vertical = draw (true, 30);
    EXPECT_EQ (getInkArea (vertical), Area (6, 11, 18, 28));
    EXPECT_EQ (vertical.getPixelAt (15, 25), colour);
    EXPECT_NE (vertical.getPixelAt (6, 11), colour);
    EXPECT_EQ (vertical.getPixelAt (10, 11), colour);

    EXPECT_EQ (getInkArea (draw (false, 30)), Area (11, 6, 28, 18));
}

TEST_F (ScrollBarTest, ThumbIsBrighterUnderTheMouseAndNotOtherwiseWhenPressed)
{
    EXPECT_EQ (draw (true, 30, true).getPixelAt (15, 25), colour.brighter (0.25f));
    EXPECT_EQ (draw (true, 30, true, true).getPixelAt (15, 25), colour.brighter (0.25f));
    EXPECT_EQ (draw (true, 30, false, true).getPixelAt (15, 25), colour);
}

TEST_F (ScrollBarTest, PaintsNothingWithNothingToScroll)
{
    bar.setCurrentRange (0.0, 100.0, juce::dontSendNotification);
    EXPECT_TRUE (getInkArea (draw (true, 30)).isEmpty());

    bar.setLookAndFeel (&lookAndFeel);
    bar.setSize (20, 100);
    EXPECT_TRUE (getInkArea (render (bar)).isEmpty());

    bar.setCurrentRange (0.0, 50.0, juce::dontSendNotification);
    EXPECT_FALSE (getInkArea (render (bar)).isEmpty());
    bar.setLookAndFeel (nullptr);
}

TEST_F (ScrollBarTest, TinyThumbVanishes)
{
    EXPECT_TRUE (getInkArea (draw (true, 2)).isEmpty());
    EXPECT_TRUE (getInkArea (draw (false, 0)).isEmpty());
}

TEST (ScrollBarThumbTest, HasNoNegativeSize)
{
    std::mt19937 random (3);
    std::uniform_int_distribution<int> size (0, 40);

    for (auto i = 0; i < 10000; ++i)
    {
        const auto area =
            getScrollBarThumbArea ({ 0, 0, size (random), size (random) }, i % 2 == 0, size (random), size (random));
        ASSERT_GE (area.getWidth(), 0);
        ASSERT_GE (area.getHeight(), 0);
    }
}

TEST (TreeBoxTest, PointsRightWhenClosedAndDownWhenOpen)
{
    const juce::Rectangle<float> area (0.0f, 0.0f, 30.0f, 30.0f);

    const auto closed = makeTreeBoxTriangle (area, false);
    EXPECT_EQ (closed.getBounds().toNearestInt(), Area (12, 10, 10, 10));
    EXPECT_TRUE (closed.contains (20.0f, 15.0f));
    EXPECT_FALSE (closed.contains (21.0f, 11.0f));
    EXPECT_FALSE (closed.contains (17.0f, 19.0f));

    const auto open = makeTreeBoxTriangle (area, true);
    EXPECT_EQ (open.getBounds().toNearestInt(), Area (12, 10, 10, 10));
    EXPECT_TRUE (open.contains (17.0f, 18.0f));
    EXPECT_FALSE (open.contains (13.0f, 19.0f));
    EXPECT_TRUE (open.contains (20.0f, 11.0f));
}

TEST (TreeBoxTest, KeepsItsProportionsInALowArea)
{
    EXPECT_EQ (makeTreeBoxTriangle ({ 0.0f, 0.0f, 60.0f, 12.0f }, true).getBounds().toNearestInt(), Area (30, 4, 4, 4));
}

TEST (TreeBoxTest, ContrastsWithTheBackground)
{
    EXPECT_EQ (getTreeBoxColour (juce::Colours::white, false).getARGB(), 0x4c000000u);
    EXPECT_EQ (getTreeBoxColour (juce::Colours::white, true).getARGB(), 0x80000000u);
    EXPECT_EQ (getTreeBoxColour (juce::Colours::black, false).getARGB(), 0x4cffffffu);
    EXPECT_EQ (getTreeBoxColour (juce::Colours::black, true).getARGB(), 0x80ffffffu);
    EXPECT_EQ (getTreeBoxColour (juce::Colour (0xff808080), false).getARGB(), 0x4c000000u);
    EXPECT_EQ (getTreeBoxColour (juce::Colour (0xff7f7f7f), false).getARGB(), 0x4cffffffu);
}

TEST (TreeBoxTest, IsDrawnInThatShapeAndColour)
{
    LookAndFeel lookAndFeel;
    const auto image = render (
        40, 40,
        [&] (juce::Graphics& g) {
            lookAndFeel.drawTreeviewPlusMinusBox (g, { 0.0f, 0.0f, 30.0f, 30.0f }, juce::Colours::white, true, false);
        });

    EXPECT_EQ (getInkArea (image), Area (12, 10, 10, 10));
    EXPECT_EQ (image.getPixelAt (17, 12).getARGB(), 0x4c000000u);
}

TEST (CaretTest, IsOnePixelWideAtAnyZoom)
{
    LookAndFeel lookAndFeel;
    const std::unique_ptr<juce::CaretComponent> caret (lookAndFeel.createCaretComponent (nullptr));

    for (const auto zoom : { 1.0f, 2.0f, 0.5f })
    {
        caret->setTransform (juce::AffineTransform::scale (zoom));
        caret->setCaretPosition ({ 10, 20, 7, 15 });
        EXPECT_EQ (caret->getBounds(), Area (10, 20, 1, 15)) << zoom;
    }
}

TEST (CaretTest, TakesAnotherWidthButNoneBelowZero)
{
    MyCaretComponent caret (nullptr);
    EXPECT_EQ (caret.caretWidth, 1);

    caret.caretWidth = 4;
    caret.setCaretPosition ({ 10, 20, 7, 15 });
    EXPECT_EQ (caret.getBounds(), Area (10, 20, 4, 15));

    caret.caretWidth = -3;
    caret.setCaretPosition ({ 10, 20, 7, 15 });
    EXPECT_EQ (caret.getBounds(), Area (10, 20, 0, 15));
}

TEST (CaretTest, IsTheOneOfTextEditors)
{
    LookAndFeel lookAndFeel;
    juce::TextEditor editor;
    editor.setLookAndFeel (&lookAndFeel);
    editor.setSize (100, 20);

    const std::function<bool (const juce::Component&)> holdsCaret = [&] (const juce::Component& component)
    {
        const auto& children = component.getChildren();
        return dynamic_cast<const MyCaretComponent*> (&component) != nullptr
               || std::any_of (children.begin(), children.end(),
                               [&] (const auto* child) { return holdsCaret (*child); });
    };

    EXPECT_TRUE (holdsCaret (editor));
    editor.setLookAndFeel (nullptr);
}
} // namespace
} // namespace cv::pluginCore
