#include "varlo/lookAndFeel/PopupMenuPainter.h"

#include "support/Rendering.h"
#include "varlo/lookAndFeel/PluginLookAndFeel.h"

#include <gtest/gtest.h>

#include <random>

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

TEST (MenuSeparatorTest, IsALineInTheMiddle)
{
    EXPECT_EQ (getMenuSeparator ({ 0, 0, 100, 10 }), Area (4, 4, 92, 1));
    EXPECT_EQ (getMenuSeparator ({ 5, 20, 100, 2 }), Area (9, 20, 92, 1));
    EXPECT_EQ (getMenuSeparator ({ 0, 0, 100, 1 }), Area (4, 0, 92, 1));
    EXPECT_EQ (getMenuSeparator ({ 0, 0, 6, 0 }), Area (4, 0, 0, 0));
}

MenuItemState makeSubMenu()
{
    MenuItemState item;
    item.hasSubMenu = true;
    return item;
}

TEST (MenuItemLayoutTest, IndentsATextByAFifthOfTheHeight)
{
    const auto layout = layOutMenuItem ({ 0, 0, 200, 20 }, {}, 9.6f);
    EXPECT_EQ (layout.text, Area (7, 3, 187, 14));
    EXPECT_TRUE (layout.marker.isEmpty());
    EXPECT_TRUE (layout.arrow.isEmpty());
}

TEST (MenuItemLayoutTest, GivesASubMenuAnArrowAndTwiceTheIndent)
{
    const auto layout = layOutMenuItem ({ 0, 0, 200, 20 }, makeSubMenu(), 9.6f);
    EXPECT_EQ (layout.text, Area (11, 3, 174, 14));
    EXPECT_TRUE (layout.marker.isEmpty());

    const auto arrow = layout.arrow.getBounds();
    EXPECT_FLOAT_EQ (arrow.getX(), 188.0f);
    EXPECT_FLOAT_EQ (arrow.getY(), 5.2f);
    EXPECT_NEAR (arrow.getWidth(), 5.76f, 0.0001f);
    EXPECT_FLOAT_EQ (arrow.getHeight(), 9.6f);
    EXPECT_TRUE (layout.arrow.contains (193.0f, 10.0f)) << "it points to the right";
    EXPECT_FALSE (layout.arrow.contains (193.0f, 6.0f));
}

TEST (MenuItemLayoutTest, MarksASubMenuThatIsTickedOrUnderTheMouse)
{
    auto item = makeSubMenu();
    item.isHighlighted = true;
    EXPECT_EQ (layOutMenuItem ({ 0, 0, 200, 20 }, item, 9.6f).marker, Area (5, 3, 4, 14));
    EXPECT_EQ (layOutMenuItem ({ 0, 0, 200, 20 }, item, 9.6f).text, Area (13, 3, 172, 14));

    item.isHighlighted = false;
    item.isTicked = true;
    EXPECT_EQ (layOutMenuItem ({ 10, 40, 200, 20 }, item, 9.6f).marker, Area (15, 43, 4, 14));

    item.hasSubMenu = false;
    EXPECT_TRUE (layOutMenuItem ({ 0, 0, 200, 20 }, item, 9.6f).marker.isEmpty());
}

TEST (MenuItemLayoutTest, HasNoNegativeSizes)
{
    std::mt19937 random (1);
    std::uniform_int_distribution<int> length (0, 60);
    std::bernoulli_distribution coin;

    for (auto i = 0; i < 10000; ++i)
    {
        const Area area (length (random), length (random));
        MenuItemState item;
        item.hasSubMenu = coin (random);
        item.isTicked = coin (random);
        const auto layout = layOutMenuItem (area, item, 0.3f * (float) length (random));

        for (const auto& part : { layout.text, layout.marker, getMenuSeparator (area), getMenuHeaderBand (area),
                                  getMenuHeaderTextArea (area) })
        {
            ASSERT_GE (part.getWidth(), 0) << area.toString();
            ASSERT_GE (part.getHeight(), 0) << area.toString();
        }
    }
}

class PopupMenuTest : public testing::Test
{
protected:
    /** An item of 300 by 40 logical pixels, with 10 logical pixels around it. */
    juce::Image draw (const MenuItemState& item, const juce::Colour* colour = nullptr, const juce::Drawable* icon = {})
    {
        return render (320, 60,
                       [&] (juce::Graphics& g)
                       {
                           look.drawPopupMenuItem (g, area, false, item.isActive, item.isHighlighted, item.isTicked,
                                                   item.hasSubMenu, item.text, item.shortcutText, icon, colour);
                       });
    }

    static MenuItemState makeItem()
    {
        MenuItemState item;
        item.text = "HHHH";
        return item;
    }

    bool isInkOf (const juce::Image& image, juce::Colour colour) const { return ! getAreaOf (image, colour).isEmpty(); }

    juce::Point<int> idealSize (const juce::String& text, bool isSeparator, int standardHeight)
    {
        juce::Point<int> size;
        look.getIdealPopupMenuItemSize (text, isSeparator, standardHeight, size.x, size.y);
        return size;
    }

    const Area area { 10, 10, 300, 40 };
    PluginLookAndFeel look;
    const juce::Colour base = look.findColour (juce::PopupMenu::textColourId);
    const juce::Colour highlight = look.findColour (juce::PopupMenu::highlightedTextColourId);
    const juce::Colour special = juce::Colours::orange;
};

TEST_F (PopupMenuTest, SeparatorIsDrawnInTheMiddle)
{
    const auto image =
        render (320, 60,
                [&] (juce::Graphics& g)
                { look.drawPopupMenuItem (g, area, true, true, false, false, false, {}, {}, nullptr, nullptr); });
    EXPECT_EQ (getInkArea (image), Area (14, 29, 292, 1));
    EXPECT_EQ (image.getPixelAt (100, 29),
               test::asDrawn (look.findColour (juce::PopupMenu::backgroundColourId).contrasting (0.15f)));
}

TEST_F (PopupMenuTest, TextIsBrightUnderTheMouseAndWhereItIsTicked)
{
    auto item = makeItem();
    EXPECT_TRUE (isInkOf (draw (item), base));
    EXPECT_FALSE (isInkOf (draw (item), highlight));

    item.isHighlighted = true;
    EXPECT_TRUE (isInkOf (draw (item), highlight));

    item.isHighlighted = false;
    item.isTicked = true;
    EXPECT_TRUE (isInkOf (draw (item), highlight));

    item.hasSubMenu = true;
    EXPECT_TRUE (isInkOf (draw (item), base));
    EXPECT_FALSE (isInkOf (draw (item), highlight));
}

TEST_F (PopupMenuTest, ItemsOwnColourTakesThePlaceOfThePlainOne)
{
    auto item = makeItem();
    EXPECT_TRUE (isInkOf (draw (item, &special), special));

    item.isTicked = true;
    EXPECT_TRUE (isInkOf (draw (item, &special), highlight));
    item.hasSubMenu = true;
    EXPECT_TRUE (isInkOf (draw (item, &special), special));
    item.isHighlighted = true;
    EXPECT_TRUE (isInkOf (draw (item, &special), highlight));
    EXPECT_FALSE (isInkOf (draw (item, &special), special));
}

TEST_F (PopupMenuTest, InactiveOnesAreFaintUnlessTicked)
{
    auto item = makeItem();
    item.isActive = false;
    EXPECT_NEAR (getGreatestAlpha (draw (item), area), 102, 1);

    item.isTicked = true;
    EXPECT_EQ (getGreatestAlpha (draw (item), area), 255);
}

TEST_F (PopupMenuTest, SubMenuHasAnArrowAndIsMarkedUnderTheMouse)
{
    auto item = makeItem();
    item.text = {};
    item.hasSubMenu = true;

    // Six tenths of the font's ascent, from three logical pixels before the right end on.
    const auto arrowHeight = 0.6f * look.getPopupMenuFont().getAscent();
    const auto arrow = getInkArea (draw (item));
    EXPECT_EQ (arrow.getX(), 307 - (int) arrowHeight);
    EXPECT_NEAR (arrow.getHeight(), arrowHeight, 2.0f);
    EXPECT_NEAR (arrow.toFloat().getCentreY(), 30.0f, 0.6f);

    item.isHighlighted = true;
    EXPECT_EQ (getAreaOf (draw (item).getClippedImage ({ 0, 0, 150, 60 }), highlight), Area (17, 13, 8, 34));

    item.isHighlighted = false;
    item.isTicked = true;
    EXPECT_EQ (getAreaOf (draw (item).getClippedImage ({ 0, 0, 150, 60 }), base), Area (17, 13, 8, 34));

    item.isActive = false;
    item.isTicked = false;
    EXPECT_NEAR (getGreatestAlpha (draw (item), area), 102, 3);

    item.isHighlighted = true;
    EXPECT_EQ (getGreatestAlpha (draw (item), { 17, 13, 8, 34 }), 255) << "the marker isn't faint";
}

TEST_F (PopupMenuTest, FontIsThreeQuartersOfTheHeightWhereTheTextFits)
{
    const auto font = look.getPopupMenuFont();
    EXPECT_FLOAT_EQ (getMenuItemFontHeight ({ 0, 0, 300, 40 }, font, "HHHH"), 30.0f);

    const auto width =
        juce::roundToInt (std::ceil (juce::GlyphArrangement::getStringWidth (font.withHeight (40.0f), "HHHHHHHH")));
    EXPECT_FLOAT_EQ (getMenuItemFontHeight ({ 0, 0, width / 2, 40 }, font, "HHHHHHHH"),
                     std::floor ((float) (width / 2) / (float) width * 40.0f));

    const auto ink = getInkArea (draw (makeItem()));
    EXPECT_NEAR (ink.getX(), 10 + 3 + 8, 4);
    EXPECT_NEAR (ink.toFloat().getCentreY(), 30.0f, 3.0f);
}

TEST_F (PopupMenuTest, ShortcutStandsAtTheRightInASmallerFont)
{
    auto item = makeItem();
    const auto textHeight = getInkArea (draw (item)).getHeight();

    item.shortcutText = "HH";
    const auto image = draw (item);
    const auto shortcut = getInkArea (image.getClippedImage ({ 160, 0, 160, 60 })) + juce::Point (160, 0);
    EXPECT_NEAR (shortcut.getRight(), 304, 4);
    EXPECT_NEAR (shortcut.getHeight(), 0.75f * (float) textHeight, 1.5f);
    EXPECT_EQ (getInkArea (image.getClippedImage ({ 0, 0, 160, 60 })).getHeight(), textHeight);
}

TEST_F (PopupMenuTest, ItemsWithAnIconKeepTheStockLook)
{
    juce::Path square;
    square.addRectangle (0.0f, 0.0f, 10.0f, 10.0f);
    juce::DrawablePath icon;
    icon.setPath (square);
    icon.setFill (juce::Colours::orange);

    auto item = makeItem();
    const auto stock = render (320, 60,
                               [&] (juce::Graphics& g)
                               {
                                   look.juce::LookAndFeel_V4::drawPopupMenuItem (g, area, false, true, false, false,
                                                                                 false, item.text, {}, &icon, nullptr);
                               });

    EXPECT_TRUE (areSame (draw (item, nullptr, &icon), stock));
    EXPECT_TRUE (isInkOf (stock, juce::Colours::orange));
    EXPECT_FALSE (areSame (draw (item), stock));
}

TEST_F (PopupMenuTest, SectionHeaderIsTheInverseOfTheMenu)
{
    const auto dark = look.findColour (juce::PopupMenu::headerTextColourId);
    look.editorWidth = 1050;
    const auto image = render (320, 60, [&] (juce::Graphics& g) { look.drawPopupMenuSectionHeader (g, area, "HHHH"); });

    EXPECT_EQ (getAreaOf (image, dark.contrasting (0.9f)), Area (10, 16, 300, 28));
    EXPECT_EQ (getInkArea (image), Area (10, 16, 300, 28));

    const auto text = getAreaOf (image, dark);
    EXPECT_NEAR (text.getX(), 18, 4);
    EXPECT_NEAR (text.getBottom(), 44, 8);
    EXPECT_NEAR (text.getHeight(), 24.0f * 0.6f, 3.0f) << "capitals of a font of 24 logical pixels";
}

TEST (MenuHeaderTest, LeavesMarginsThatFollowTheHeight)
{
    EXPECT_EQ (getMenuHeaderBand ({ 0, 0, 100, 20 }), Area (0, 3, 100, 14));
    EXPECT_EQ (getMenuHeaderTextArea ({ 0, 0, 100, 20 }), Area (4, 1, 96, 16));
    EXPECT_EQ (getMenuHeaderTextArea ({ 5, 7, 100, 41 }), Area (13, 9, 92, 33));
}

TEST_F (PopupMenuTest, IdealSizes)
{
    EXPECT_EQ (idealSize ({}, true, 25), juce::Point (50, 2));
    EXPECT_EQ (idealSize ({}, true, 0), juce::Point (50, 10));
    EXPECT_EQ (idealSize ({}, true, -1), juce::Point (50, 10));

    const juce::String text ("A preset with a name");
    const auto textWidth = [&] (float height)
    {
        return (int) std::ceil (
            juce::GlyphArrangement::getStringWidth (look.getPopupMenuFont().withHeight (height), text));
    };

    EXPECT_EQ (idealSize (text, false, 20), juce::Point (20 + textWidth (15.0f), 20));
    EXPECT_EQ (idealSize ({}, false, 20), juce::Point (40, 20));
    EXPECT_EQ (idealSize (text, false, 0), juce::Point (9 + textWidth (6.75f), 9));

    look.editorWidth = 1050;
    EXPECT_EQ (idealSize (text, false, 0), juce::Point (24 + textWidth (18.0f), 24));
}

TEST_F (PopupMenuTest, BackgroundIsRoundedWithABorderOfThree)
{
    const auto image = render (100, 50, [&] (juce::Graphics& g) { look.drawPopupMenuBackground (g, 100, 50); });
    EXPECT_EQ (getInkArea (image), Area (0, 0, 100, 50));
    EXPECT_EQ (image.getPixelAt (50, 25).getAlpha(), 0xfa);
    EXPECT_LT (image.getPixelAt (0, 0).getAlpha(), 100);
    EXPECT_EQ (image.getPixelAt (4, 0).getAlpha(), 0xfa);
    EXPECT_EQ (look.getPopupMenuBorderSize(), 3);
}
} // namespace
} // namespace cv::varlo
