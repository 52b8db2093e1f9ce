#pragma once

#include "pluginCore/lookAndFeel/ColourIds.h"
#include "pluginCore/lookAndFeel/CvFonts.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::pluginCore
{
/** A text caret one logical pixel wide, half as wide as JUCE's. Message thread. */
class MyCaretComponent final : public juce::CaretComponent
{
public:
    using juce::CaretComponent::CaretComponent;

    void setCaretPosition (const juce::Rectangle<int>& characterArea) override;

    /** In logical pixels; taken when the caret next moves, and 0 if it is negative. */
    int caretWidth = 1;

private:
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (MyCaretComponent)
};

/** The look that our products share: the fonts, the colours of the framework's panels, and the drawing of
    labels, scroll bars, the text caret, trees and rows of files. The rest is JUCE's. A product derives its
    own look from it, or does without one.

    Drawing follows the properties of components, and of what they lie in, that Markers.h names.

    Message thread.
*/
class LookAndFeel : public juce::LookAndFeel_V4
{
public:
    using enum ColourIds;
    using CvFonts = pluginCore::CvFonts;
    using MyCaretComponent = pluginCore::MyCaretComponent;

    LookAndFeel();

    /** The size of the plug-in's editor in logical pixels. The editor states it here before it lays out its children,
        so that a product's fonts can follow it.
    */
    int editorHeight = 100;
    int editorWidth = 100;

    const std::shared_ptr<CvFonts> fonts = CvFonts::getShared();
    juce::Font regularFont = fonts->regular;
    juce::Font semiBoldFont = fonts->semiBold;
    juce::Font boldFont = fonts->bold;
    juce::Font monoFont = fonts->mono;

    /** For products; nothing here draws with it. */
    juce::Font spareFont { juce::FontOptions (14.0f) };

    /** The fonts of labels, menus and buttons, and of labels with the property bold. */
    juce::Font labelFont = regularFont;
    juce::Font labelBoldFont = semiBoldFont;

    void drawScrollbar (juce::Graphics&,
                        juce::ScrollBar&,
                        int x,
                        int y,
                        int width,
                        int height,
                        bool isVertical,
                        int thumbStart,
                        int thumbSize,
                        bool isMouseOver,
                        bool isMouseDown) override;

    juce::Font getTextButtonFont (juce::TextButton&, int buttonHeight) override;

    void drawTreeviewPlusMinusBox (juce::Graphics&,
                                   const juce::Rectangle<float>& area,
                                   juce::Colour backgroundColour,
                                   bool isOpen,
                                   bool isMouseOver) override;

    juce::CaretComponent* createCaretComponent (juce::Component* keyFocusOwner) override;

    void drawFileBrowserRow (juce::Graphics&,
                             int width,
                             int height,
                             const juce::File&,
                             const juce::String& filename,
                             juce::Image* icon,
                             const juce::String& fileSizeDescription,
                             const juce::String& fileTimeDescription,
                             bool isDirectory,
                             bool isItemSelected,
                             int itemIndex,
                             juce::DirectoryContentsDisplayComponent&) override;

    juce::Font getPopupMenuFont() override;

    void drawLabel (juce::Graphics&, juce::Label&) override;
    juce::Font getLabelFont (juce::Label&) override;

    /** A frame in the colour of labels, whose thickness follows the editor's height. */
    std::unique_ptr<juce::FocusOutline> createFocusOutlineForComponent (juce::Component&) override;

    /** No border, whatever the label asks for. */
    juce::BorderSize<int> getLabelBorderSize (juce::Label&) override;

private:
    void setPanelColours();

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (LookAndFeel)
};
} // namespace cv::pluginCore
