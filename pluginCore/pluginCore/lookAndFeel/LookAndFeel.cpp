#include "pluginCore/lookAndFeel/LookAndFeel.h"

#include "pluginCore/lookAndFeel/FileRowPainter.h"
#include "pluginCore/lookAndFeel/FocusOutlinePainter.h"
#include "pluginCore/lookAndFeel/LabelPainter.h"
#include "pluginCore/lookAndFeel/Markers.h"
#include "pluginCore/lookAndFeel/ScrollBarAndTreePainter.h"

namespace cv::pluginCore
{
void MyCaretComponent::setCaretPosition (const juce::Rectangle<int>& characterArea)
{
    // This starts the blinking as well.
    CaretComponent::setCaretPosition (characterArea);

    setBounds (characterArea.withWidth (juce::jmax (caretWidth, 0)));
}

LookAndFeel::LookAndFeel()
{
    setPanelColours();
}

void LookAndFeel::setPanelColours()
{
    const juce::Colour background (0xff111111), text (0xffeeeeee);
    const auto darkBackground = background.darker (0.4f);

    setColour (changeLogBackgroundColourId, background);
    setColour (changeLogTextColourId, text);
    setColour (displayTextBackgroundColourId, darkBackground);
    setColour (displayTextTextColourId, text);
    setColour (panelBackgroundColourId, background);
    setColour (panelDimTextColourId, juce::Colour (0xffaaaaaa));
    setColour (panelTextColourId, juce::Colour (0xfff2f2f2));
    setColour (panelWarningColourId, juce::Colours::lightcoral);
    setColour (panelDarkBackgroundColourId, darkBackground);
    setColour (juce::DrawableButton::backgroundColourId, juce::Colours::transparentBlack);
    setColour (juce::DrawableButton::backgroundOnColourId, juce::Colours::transparentBlack);
    setColour (headerBackgroundColourId, background);
    setColour (controlPanelColourId, background);
    setColour (controlPanelTextColourId, background.contrasting (0.7f));
    setColour (presetsBarBackgroundColourId, background);
}

void LookAndFeel::drawScrollbar (juce::Graphics& g,
                                 juce::ScrollBar& scrollbar,
                                 int x,
                                 int y,
                                 int width,
                                 int height,
                                 bool isVertical,
                                 int thumbStart,
                                 int thumbSize,
                                 bool isMouseOver,
                                 bool)
{
    if (scrollbar.getCurrentRange() == scrollbar.getRangeLimit())
        return;

    const auto thumbArea = getScrollBarThumbArea ({ x, y, width, height }, isVertical, thumbStart, thumbSize);
    paintScrollBarThumb (g, thumbArea, scrollbar.findColour (juce::ScrollBar::thumbColourId), isMouseOver);
}

juce::Font LookAndFeel::getTextButtonFont (juce::TextButton& button, int buttonHeight)
{
    const auto height = (float) buttonHeight;

    if (liesInMarked (button, markers::sameButtonFont))
        return labelFont.withHeight (juce::jmax (0.8f * height, 8.0f));

    const auto width = (float) button.getWidth();
    const auto fittingHeight = fitFontHeight (labelFont, width, height, button.getButtonText(), 0.0f);
    return labelFont.withHeight (juce::jmin (0.9f * fittingHeight, 0.7f * height));
}

void LookAndFeel::drawTreeviewPlusMinusBox (
    juce::Graphics& g, const juce::Rectangle<float>& area, juce::Colour backgroundColour, bool isOpen, bool isMouseOver)
{
    g.setColour (getTreeBoxColour (backgroundColour, isMouseOver));
    g.fillPath (makeTreeBoxTriangle (area, isOpen));
}

juce::CaretComponent* LookAndFeel::createCaretComponent (juce::Component* keyFocusOwner)
{
    return std::make_unique<MyCaretComponent> (keyFocusOwner).release();
}

void LookAndFeel::drawFileBrowserRow (juce::Graphics& g,
                                      int width,
                                      int height,
                                      const juce::File&,
                                      const juce::String& filename,
                                      juce::Image* icon,
                                      const juce::String& fileSizeDescription,
                                      const juce::String& fileTimeDescription,
                                      bool isDirectory,
                                      bool isItemSelected,
                                      int,
                                      juce::DirectoryContentsDisplayComponent& display)
{
    using Display = juce::DirectoryContentsDisplayComponent;

    const auto* const list = dynamic_cast<juce::Component*> (&display);
    const auto colourOf = [&] (int id) { return list != nullptr ? list->findColour (id) : findColour (id); };
    const auto hidesIcons = list != nullptr && (bool) list->getProperties()[properties::noFolderIcon];
    const auto hasIcon = icon != nullptr && ! hidesIcons;
    const auto layout = layOutFileRow (width, height, hasIcon, isDirectory);
    const auto nameColourId = isItemSelected ? Display::highlightedTextColourId : Display::textColourId;

    g.fillAll (colourOf (juce::TreeView::backgroundColourId));

    if (isItemSelected)
        paintFileRowHighlight (g, colourOf (Display::highlightColourId));

    if (hasIcon && icon->isValid())
        paintFileRowIcon (g, *icon, layout.icon);

    paintFileRowTexts (g, layout, colourOf (nameColourId), filename, fileSizeDescription, fileTimeDescription);
}

juce::Font LookAndFeel::getPopupMenuFont()
{
    return labelFont;
}

void LookAndFeel::drawLabel (juce::Graphics& g, juce::Label& label)
{
    const auto textArea = getLabelBorderSize (label).subtractedFrom (label.getLocalBounds());
    paintLabel (g, label, getLabelFont (label), textArea);
}

juce::Font LookAndFeel::getLabelFont (juce::Label& label)
{
    const auto isBold = (bool) label.getProperties()[properties::bold];
    return (isBold ? labelBoldFont : labelFont).withHeight (getLabelFontHeight (label));
}

std::unique_ptr<juce::FocusOutline> LookAndFeel::createFocusOutlineForComponent (juce::Component&)
{
    constexpr auto thinnest = 1.0f, heightProportion = 0.0035f;

    const auto thickness = juce::jmax (thinnest, heightProportion * (float) editorHeight);
    return std::make_unique<juce::FocusOutline> (
        std::make_unique<FocusOutlinePainter> (findColour (juce::Label::textColourId), thickness));
}

juce::BorderSize<int> LookAndFeel::getLabelBorderSize (juce::Label&)
{
    return juce::BorderSize<int> (0);
}
} // namespace cv::pluginCore
