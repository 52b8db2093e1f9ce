#include "varlo/lookAndFeel/PopupMenuPainter.h"

#include "pluginCore/lookAndFeel/CvFonts.h"

namespace cv::varlo
{
namespace
{
constexpr auto fontProportion = 0.75f;
constexpr auto standardSqueezing = 0.0f;

/** Sets a colour, fainter for what can't be chosen and isn't ticked either. */
void setInk (juce::Graphics& g, const MenuItemState& item, juce::Colour colour)
{
    constexpr auto inactiveOpacity = 0.4f;

    g.setColour (colour);

    if (! item.isActive && ! item.isTicked)
        g.setOpacity (inactiveOpacity);
}
} // namespace

juce::Rectangle<int> getMenuSeparator (juce::Rectangle<int> itemArea) noexcept
{
    constexpr auto sideMargin = 4;

    const auto top = juce::jmax (itemArea.getHeight() / 2 - 1, 0);
    return itemArea.reduced (sideMargin, 0).withTrimmedTop (top).removeFromTop (1);
}

MenuItemLayout layOutMenuItem (juce::Rectangle<int> itemArea, const MenuItemState& item, float arrowHeight)
{
    constexpr auto margin = 3;
    constexpr auto arrowProportion = 0.6f;

    const auto unit = itemArea.proportionOfHeight (0.4f);
    auto cell = itemArea.reduced (margin);
    MenuItemLayout layout;

    if (item.hasMarker())
        layout.marker = cell.translated (unit / 4, 0).withWidth (unit / 2);

    cell.removeFromLeft (item.hasSubMenu ? unit : unit / 2);

    if (item.hasSubMenu)
    {
        const auto arrow = cell.removeFromRight ((int) arrowHeight);
        const auto x = (float) arrow.getX();
        const auto y = (float) arrow.getCentreY();
        layout.arrow.addTriangle (x, y - 0.5f * arrowHeight, x, y + 0.5f * arrowHeight,
                                  x + arrowProportion * arrowHeight, y);
    }

    cell.removeFromRight (margin);
    cell.removeFromLeft (item.hasMarker() ? unit / 4 : 0);
    layout.text = cell;
    return layout;
}

float getMenuItemFontHeight (juce::Rectangle<int> itemArea, const juce::Font& font, const juce::String& text)
{
    const auto area = itemArea.toFloat();
    return juce::jmin (pluginCore::fitFontHeight (font, area.getWidth(), area.getHeight(), text, 0.0f),
                       fontProportion * area.getHeight());
}

juce::Point<int> getIdealMenuItemSize (const juce::String& text,
                                       bool isSeparator,
                                       int standardHeight,
                                       const juce::Font& font)
{
    constexpr auto separatorWidth = 50;
    constexpr auto separatorHeight = 10;

    if (isSeparator)
        return { separatorWidth, standardHeight > 0 ? standardHeight / 10 : separatorHeight };

    const auto height = standardHeight > 0 ? standardHeight : juce::roundToInt (0.8f * font.getHeight());
    const auto textFont = font.withHeight (fontProportion * (float) height);
    const auto textWidth = (int) std::ceil (juce::GlyphArrangement::getStringWidth (textFont, text));
    return { juce::jmax (2 * height, height + textWidth), height };
}

void paintMenuSeparator (juce::Graphics& g, juce::Rectangle<int> itemArea, juce::Colour background)
{
    g.setColour (background.contrasting (0.15f));
    g.fillRect (getMenuSeparator (itemArea));
}

void paintMenuItem (juce::Graphics& g,
                    juce::Rectangle<int> itemArea,
                    const MenuItemState& item,
                    const juce::Font& menuFont,
                    juce::Colour colour)
{
    constexpr auto arrowProportion = 0.6f;
    constexpr auto shortcutProportion = 0.75f, shortcutSqueezing = 0.95f;

    const auto layout = layOutMenuItem (itemArea, item, arrowProportion * menuFont.getAscent());
    const auto font = menuFont.withHeight (getMenuItemFontHeight (itemArea, menuFont, item.text));

    g.setColour (colour);
    g.fillRect (layout.marker);

    setInk (g, item, colour);
    g.fillPath (layout.arrow);

    g.setFont (font);
    g.drawFittedText (item.text, layout.text, juce::Justification::centredLeft, 1, standardSqueezing);

    if (item.shortcutText.isEmpty())
        return;

    g.setFont (font.withHeight (shortcutProportion * font.getHeight()).withHorizontalScale (shortcutSqueezing));
    g.drawText (item.shortcutText, layout.text, juce::Justification::centredRight, true);
}

juce::Rectangle<int> getMenuHeaderBand (juce::Rectangle<int> itemArea) noexcept
{
    return itemArea.reduced (0, itemArea.proportionOfHeight (0.15f));
}

juce::Rectangle<int> getMenuHeaderTextArea (juce::Rectangle<int> itemArea) noexcept
{
    const auto indent = itemArea.proportionOfHeight (0.2f);
    return itemArea.withTrimmedLeft (indent).withTrimmedBottom (indent).translated (0, indent / 4);
}

void paintMenuHeader (juce::Graphics& g,
                      juce::Rectangle<int> itemArea,
                      const juce::String& text,
                      const juce::Font& menuFont,
                      juce::Colour colour)
{
    constexpr auto headerFontProportion = 0.8f;

    g.setColour (colour.contrasting (0.9f));
    g.fillRect (getMenuHeaderBand (itemArea));

    g.setFont (menuFont.withHeight (headerFontProportion * menuFont.getHeight()));
    g.setColour (colour);
    g.drawFittedText (text, getMenuHeaderTextArea (itemArea), juce::Justification::bottomLeft, 1, standardSqueezing);
}
} // namespace cv::varlo
