#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::varlo
{
/** One item of a menu as it is at the moment. */
struct MenuItemState
{
    bool isActive = true;
    bool isHighlighted = false;
    bool isTicked = false;
    bool hasSubMenu = false;
    juce::String text;
    juce::String shortcutText;

    /** A ticked item without a sub-menu stands out as if the mouse were on it. */
    bool standsOut() const noexcept { return isHighlighted || (isTicked && ! hasSubMenu); }

    /** The way to what is ticked is marked by a bar. */
    bool hasMarker() const noexcept { return hasSubMenu && (isTicked || isHighlighted); }
};

/** The line that separates items, a logical pixel high, in the area of its own item. Any thread. */
juce::Rectangle<int> getMenuSeparator (juce::Rectangle<int> itemArea) noexcept;

/** Where an item's parts lie, in logical pixels; of the marker and the arrow only what the item has. */
struct MenuItemLayout
{
    juce::Rectangle<int> marker;
    juce::Rectangle<int> text;
    juce::Path arrow;
};

/** The layout of an item in its area. The arrow's height is in logical pixels, its width six tenths of that. Any
    thread.
*/
MenuItemLayout layOutMenuItem (juce::Rectangle<int> itemArea, const MenuItemState&, float arrowHeight);

/** The height in logical pixels of the font in which an item's text fits into the item's area. Message thread. */
float getMenuItemFontHeight (juce::Rectangle<int> itemArea, const juce::Font&, const juce::String& text);

/** How large an item wants to be, in logical pixels, in a menu of that font. A standard height of 0 or below is none.
    Message thread.
*/
juce::Point<int> getIdealMenuItemSize (const juce::String& text,
                                       bool isSeparator,
                                       int standardHeight,
                                       const juce::Font&);

/** Draws a separator on a menu of that background. Message thread. */
void paintMenuSeparator (juce::Graphics&, juce::Rectangle<int> itemArea, juce::Colour background);

/** Draws an item in that colour. Message thread. */
void paintMenuItem (
    juce::Graphics&, juce::Rectangle<int> itemArea, const MenuItemState&, const juce::Font& menuFont, juce::Colour);

/** The band of a section header, and where its text goes, in logical pixels. Any thread. */
juce::Rectangle<int> getMenuHeaderBand (juce::Rectangle<int> itemArea) noexcept;
juce::Rectangle<int> getMenuHeaderTextArea (juce::Rectangle<int> itemArea) noexcept;

/** Draws a section header: text of that colour on a band that contrasts with it. Message thread. */
void paintMenuHeader (
    juce::Graphics&, juce::Rectangle<int> itemArea, const juce::String& text, const juce::Font& menuFont, juce::Colour);
} // namespace cv::varlo
