#include "varlo/lookAndFeel/PluginLookAndFeel.h"

#include <gtest/gtest.h>

namespace cv::varlo
{
namespace
{
struct PaletteEntry
{
    int id;
    int number;
    juce::uint32 argb;
};

TEST (PluginLookAndFeelTest, SetsThePaletteUnderTheseNumbers)
{
    using Look = PluginLookAndFeel;

    const PaletteEntry palette[] {
        { juce::Label::textColourId, 0x1000281, 0xffcfcfcf },
        { juce::Slider::textBoxTextColourId, 0x1001400, 0xffcfcfcf },
        { juce::Slider::textBoxOutlineColourId, 0x1001700, 0x00000000 },
        { juce::Slider::textBoxHighlightColourId, 0x1001600, 0x805eb9aa },
        { juce::Slider::thumbColourId, 0x1001300, 0xff1e9d88 },
        { juce::TextButton::buttonColourId, 0x1000100, 0xff1e9d88 },
        { juce::TextButton::textColourOffId, 0x1000102, 0xff1e9d88 },
        { juce::TextButton::textColourOnId, 0x1000103, 0xff0f0f0f },
        { juce::PopupMenu::backgroundColourId, 0x1000700, 0xfa141414 },
        { juce::PopupMenu::textColourId, 0x1000600, juce::Colour (0xff151515).contrasting (0.9f).getARGB() },
        { juce::PopupMenu::headerTextColourId, 0x1000601, 0xff151515 },
        { juce::PopupMenu::highlightedBackgroundColourId, 0x1000900, 0xff151515 },
        { juce::PopupMenu::highlightedTextColourId, 0x1000800, 0xff1e9d88 },
        { juce::ScrollBar::thumbColourId, 0x1000400, 0xff1e9d88 },
        { Look::headerBackgroundColourId, 0xc324433, 0xff151515 },
        { Look::presetsBarBackgroundColourId, 0xc19910, 0xff151515 },
    };

    const Look look;

    for (const auto& [id, number, argb] : palette)
    {
        EXPECT_EQ (id, number);
        EXPECT_EQ (look.findColour (id).getARGB(), argb) << std::hex << id;
    }
}

TEST (PluginLookAndFeelTest, KeepsTheRestOfTheColours)
{
    const PluginLookAndFeel look;
    const pluginCore::LookAndFeel frameworkLook;
    const juce::LookAndFeel_V4 stockLook;

    EXPECT_EQ ((int) juce::Slider::trackColourId, 0x1001310);
    EXPECT_EQ (look.findColour (juce::Slider::trackColourId), stockLook.findColour (juce::Slider::trackColourId));

    for (const auto id :
         { PluginLookAndFeel::changeLogBackgroundColourId, PluginLookAndFeel::displayTextBackgroundColourId })
        EXPECT_EQ (look.findColour (id), frameworkLook.findColour (id));
}

TEST (PluginLookAndFeelTest, LaysOutHeaderAndBar)
{
    PluginLookAndFeel look;
    juce::LookAndFeel& base = look;
    EXPECT_NE (dynamic_cast<pluginCore::LookAndFeel*> (&base), nullptr);
    EXPECT_NE (dynamic_cast<pluginCore::PluginHeaderComponent::LookAndFeelMethods*> (&base), nullptr);
    EXPECT_NE (dynamic_cast<pluginCore::PresetsBar::LookAndFeelMethods*> (&base), nullptr);
}

TEST (PluginLookAndFeelTest, MenuFontGrowsWithTheEditor)
{
    PluginLookAndFeel look;
    const auto heightAt = [&] (int editorWidth)
    {
        look.editorWidth = editorWidth;
        return look.getPopupMenuFont().getHeight();
    };

    EXPECT_FLOAT_EQ (heightAt (100), 11.0f);
    EXPECT_FLOAT_EQ (heightAt (385), 11.0f);
    EXPECT_FLOAT_EQ (heightAt (1000), 1000.0f / 35.0f);
    EXPECT_FLOAT_EQ (heightAt (1050), 30.0f);
    EXPECT_EQ (look.getPopupMenuFont().getTypefacePtr()->getName(), "Barlow");
    EXPECT_EQ (look.getPopupMenuFont().getTypefacePtr()->getStyle(), "Regular");
}
} // namespace
} // namespace cv::varlo
