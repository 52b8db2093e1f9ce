#include "pluginCore/panels/DisplayTextComponent.h"

#include "pluginCore/lookAndFeel/LookAndFeel.h"
#include "support/Rendering.h"

#include <gtest/gtest.h>

namespace cv::pluginCore
{
namespace
{
using cv::test::getAreaOf;
using cv::test::getInkArea;
using cv::test::render;

class DisplayTextComponentTest : public testing::Test
{
protected:
    ~DisplayTextComponentTest() override { panel.setLookAndFeel (nullptr); }

    juce::Colour editorColour (int id) { return panel.getTextEditor().findColour (id); }

    LookAndFeel lookAndFeel;
    DisplayTextComponent panel;
};

TEST_F (DisplayTextComponentTest, IsForReadingWrappedLines)
{
    const auto& editor = panel.getTextEditor();
    EXPECT_TRUE (editor.isReadOnly());
    EXPECT_TRUE (editor.isMultiLine());
    EXPECT_TRUE (editor.isVisible());
    EXPECT_EQ (editor.getParentComponent(), &panel);

    panel.setSize (100, 300);
    panel.getTextEditor().setText ("Many words that can't all stand in one line of a panel that narrow", false);
    EXPECT_GT (editor.getTextHeight(), 3 * (int) editor.getFont().getHeight());
    EXPECT_LE (editor.getTextWidth(), 98);
}

TEST_F (DisplayTextComponentTest, LeavesAFrameRoundTheText)
{
    panel.setSize (100, 60);
    EXPECT_EQ (panel.getTextEditor().getBounds(), juce::Rectangle (1, 1, 98, 58));

    for (const auto size : { 1, 0, 2 })
    {
        panel.setSize (size, size);
        EXPECT_EQ (panel.getTextEditor().getBounds(), juce::Rectangle (1, 1, 0, 0)) << size;
    }
}

TEST_F (DisplayTextComponentTest, IsFilledWithRoundedCorners)
{
    panel.setLookAndFeel (&lookAndFeel);
    panel.setColour (displayTextBackgroundColourId, juce::Colours::red);
    panel.setSize (40, 30);
    panel.getTextEditor().setVisible (false);

    const auto image = render (panel);
    EXPECT_EQ (getAreaOf (image, juce::Colours::red), juce::Rectangle (1, 1, 38, 28));
    EXPECT_EQ (getInkArea (image), juce::Rectangle (0, 0, 40, 30));
    EXPECT_NEAR (image.getPixelAt (20, 0).getAlpha(), 128, 2);
    EXPECT_LT (image.getPixelAt (0, 0).getAlpha(), 40);
}

TEST_F (DisplayTextComponentTest, PaintsInAnySize)
{
    panel.setLookAndFeel (&lookAndFeel);

    for (const auto& size : { juce::Point (1, 1), juce::Point (1, 50), juce::Point (50, 1), juce::Point (2, 2) })
    {
        panel.setSize (size.x, size.y);
        render (panel);
    }
}

TEST_F (DisplayTextComponentTest, KeepsTheEditorsColoursUnderALookWithoutIts)
{
    juce::TextEditor plainEditor;

    for (const auto id :
         { juce::TextEditor::backgroundColourId, juce::TextEditor::highlightColourId, juce::TextEditor::textColourId })
        EXPECT_EQ (editorColour (id), plainEditor.findColour (id));

    panel.setColour (displayTextTextColourId, juce::Colours::red);
    EXPECT_EQ (editorColour (juce::TextEditor::textColourId), plainEditor.findColour (juce::TextEditor::textColourId));
}

TEST_F (DisplayTextComponentTest, TakesTheColoursOfItsLook)
{
    panel.setLookAndFeel (&lookAndFeel);
    const juce::Colour background (0xff0c0c0c);
    EXPECT_EQ (editorColour (juce::TextEditor::backgroundColourId), background);
    EXPECT_EQ (editorColour (juce::TextEditor::highlightColourId), background.contrasting (0.1f));
    EXPECT_EQ (editorColour (juce::TextEditor::textColourId), juce::Colour (0xffeeeeee));
}

TEST_F (DisplayTextComponentTest, TakesColoursOfItsOwn)
{
    panel.setColour (displayTextTextColourId, juce::Colours::red);
    panel.setColour (displayTextBackgroundColourId, juce::Colours::white);
    EXPECT_EQ (editorColour (juce::TextEditor::backgroundColourId), juce::Colours::white);
    EXPECT_EQ (editorColour (juce::TextEditor::highlightColourId), juce::Colours::white.contrasting (0.1f));
    EXPECT_EQ (editorColour (juce::TextEditor::textColourId), juce::Colours::red);
}

TEST_F (DisplayTextComponentTest, TextThatStandsThereFollowsTheColour)
{
    panel.setLookAndFeel (&lookAndFeel);
    panel.setSize (200, 60);
    panel.getTextEditor().applyFontToAllText (lookAndFeel.boldFont.withHeight (40.0f));
    panel.getTextEditor().setText ("HHH", false);
    ASSERT_TRUE (getAreaOf (render (panel), juce::Colours::red).isEmpty());

    panel.setColour (displayTextTextColourId, juce::Colours::red);
    EXPECT_FALSE (getAreaOf (render (panel), juce::Colours::red).isEmpty());
}
} // namespace
} // namespace cv::pluginCore
