#include "varlo/lookAndFeel/PluginLookAndFeel.h"

#include "pluginCore/presetsBar/PresetsBar.h"
#include "varlo/lookAndFeel/ButtonPainter.h"
#include "varlo/lookAndFeel/ControlState.h"
#include "varlo/lookAndFeel/Layout.h"
#include "varlo/lookAndFeel/LinearSliderPainter.h"
#include "varlo/lookAndFeel/Palette.h"
#include "varlo/lookAndFeel/PopupMenuPainter.h"
#include "varlo/lookAndFeel/ResizerPainter.h"
#include "varlo/lookAndFeel/RotarySliderPainter.h"
#include "varlo/lookAndFeel/SheenLabelPainter.h"

namespace cv::varlo
{
PluginLookAndFeel::PluginLookAndFeel()
{
    setPalette();
}

void PluginLookAndFeel::setPalette()
{
    setColour (juce::Label::textColourId, palette::text);
    setColour (juce::Slider::textBoxTextColourId, palette::text);
    setColour (juce::Slider::textBoxOutlineColourId, juce::Colours::transparentBlack);
    setColour (juce::Slider::textBoxHighlightColourId, palette::textSelection);
    setColour (juce::Slider::thumbColourId, palette::accent);
    setColour (juce::TextButton::buttonColourId, palette::accent);
    setColour (juce::TextButton::textColourOffId, palette::accent);
    setColour (juce::TextButton::textColourOnId, palette::textOnAccent);
    setColour (juce::PopupMenu::backgroundColourId, palette::menu);
    setColour (juce::PopupMenu::textColourId, palette::panel.contrasting (0.9f));
    setColour (juce::PopupMenu::headerTextColourId, palette::panel);
    setColour (juce::PopupMenu::highlightedBackgroundColourId, palette::panel);
    setColour (juce::PopupMenu::highlightedTextColourId, palette::accent);
    setColour (juce::ScrollBar::thumbColourId, palette::accent);
    setColour (headerBackgroundColourId, palette::panel);
    setColour (presetsBarBackgroundColourId, palette::panel);
}

void PluginLookAndFeel::drawButtonBackground (
    juce::Graphics& g, juce::Button& button, const juce::Colour& background, bool isHighlighted, bool isDown)
{
    const auto state = getButtonState (button, isHighlighted, isDown);

    paintButtonShape (g, makeButtonShape (button.getWidth(), button.getHeight()), state.isEnabled,
                      getButtonFill (state, background, findColour (juce::Slider::trackColourId)),
                      shadowOffsetFor (button));
}

juce::Font PluginLookAndFeel::getTextButtonFont (juce::TextButton&, int buttonHeight)
{
    return mediumFont.withHeight (0.6f * (float) buttonHeight);
}

void PluginLookAndFeel::drawButtonText (juce::Graphics& g, juce::TextButton& button, bool isHighlighted, bool isDown)
{
    const auto state = getButtonState (button, isHighlighted, isDown);

    // The identifiers are meant for dark buttons that light up; here an off button is the lit one.
    const auto colour = getCaptionColour (state, findColour (juce::Label::textColourId),
                                          button.findColour (juce::TextButton::textColourOnId),
                                          button.findColour (juce::TextButton::textColourOffId));

    paintCaption (g, button, state, getTextButtonFont (button, button.getHeight()), colour);
}

void PluginLookAndFeel::drawDrawableButton (juce::Graphics& g, juce::DrawableButton& button, bool, bool)
{
    paintDrawableButtonShadow (g, button);
}

void PluginLookAndFeel::drawPopupMenuBackground (juce::Graphics& g, int width, int height)
{
    constexpr auto cornerSize = 4.0f;

    g.setColour (findColour (juce::PopupMenu::backgroundColourId));
    g.fillRoundedRectangle (juce::Rectangle (width, height).toFloat(), cornerSize);
}

void PluginLookAndFeel::drawPopupMenuItem (juce::Graphics& g,
                                           const juce::Rectangle<int>& area,
                                           bool isSeparator,
                                           bool isActive,
                                           bool isHighlighted,
                                           bool isTicked,
                                           bool hasSubMenu,
                                           const juce::String& text,
                                           const juce::String& shortcutText,
                                           const juce::Drawable* icon,
                                           const juce::Colour* textColour)
{
    if (icon != nullptr)
    {
        LookAndFeel::drawPopupMenuItem (g, area, isSeparator, isActive, isHighlighted, isTicked, hasSubMenu, text,
                                        shortcutText, icon, textColour);
        return;
    }

    if (isSeparator)
    {
        paintMenuSeparator (g, area, findColour (juce::PopupMenu::backgroundColourId));
        return;
    }

    const MenuItemState item { .isActive = isActive,
                               .isHighlighted = isHighlighted,
                               .isTicked = isTicked,
                               .hasSubMenu = hasSubMenu,
                               .text = text,
                               .shortcutText = shortcutText };
    const auto ownColour = textColour != nullptr ? *textColour : findColour (juce::PopupMenu::textColourId);
    const auto colour = item.standsOut() ? findColour (juce::PopupMenu::highlightedTextColourId) : ownColour;
    paintMenuItem (g, area, item, getPopupMenuFont(), colour);
}

void PluginLookAndFeel::drawPopupMenuSectionHeader (juce::Graphics& g,
                                                    const juce::Rectangle<int>& area,
                                                    const juce::String& sectionName)
{
    paintMenuHeader (g, area, sectionName, getPopupMenuFont(), findColour (juce::PopupMenu::headerTextColourId));
}

juce::Font PluginLookAndFeel::getPopupMenuFont()
{
    constexpr auto smallestHeight = 11.0f, widthProportion = 1.0f / 35.0f;

    return LookAndFeel::regularFont.withHeight (juce::jmax (smallestHeight, (float) editorWidth * widthProportion));
}

void PluginLookAndFeel::getIdealPopupMenuItemSize (
    const juce::String& text, bool isSeparator, int standardMenuItemHeight, int& idealWidth, int& idealHeight)
{
    const auto size = getIdealMenuItemSize (text, isSeparator, standardMenuItemHeight, getPopupMenuFont());
    idealWidth = size.x;
    idealHeight = size.y;
}

int PluginLookAndFeel::getPopupMenuBorderSize()
{
    return 3;
}

void PluginLookAndFeel::preparePopupMenuWindow (juce::Component& menu)
{
    if (menu.getParentComponent() != nullptr)
        menu.setOpaque (false);
}

void PluginLookAndFeel::drawLabel (juce::Graphics& g, juce::Label& label)
{
    const auto textArea = getLabelBorderSize (label).subtractedFrom (label.getLocalBounds());
    paintSheenLabel (g, label, getLabelFont (label), textArea);
}

juce::Font PluginLookAndFeel::getLabelFont (juce::Label& label)
{
    return mediumFont.withHeight (getSheenLabelFontHeight (label));
}

void PluginLookAndFeel::drawLinearSlider (juce::Graphics& g,
                                          int x,
                                          int y,
                                          int width,
                                          int height,
                                          float sliderPosition,
                                          float minSliderPosition,
                                          float maxSliderPosition,
                                          juce::Slider::SliderStyle,
                                          juce::Slider& slider)
{
    paintLinearSlider (g, { x, y, width, height },
                       { .isVertical = slider.isVertical(),
                         .hasTwoValues = slider.isTwoValue(),
                         .position = sliderPosition,
                         .minPosition = minSliderPosition,
                         .maxPosition = maxSliderPosition,
                         .hasTextBox = slider.getTextBoxWidth() != 0,
                         .isEnabled = slider.isEnabled(),
                         .isHovered = isHovered (slider),
                         .mousePosition = slider.getMouseXYRelative().toFloat(),
                         .track = slider.findColour (juce::Slider::trackColourId, true),
                         .thumb = slider.findColour (juce::Slider::thumbColourId, true) });
}

void PluginLookAndFeel::drawRotarySlider (juce::Graphics& g,
                                          int x,
                                          int y,
                                          int width,
                                          int height,
                                          float sliderPosition,
                                          float rotaryStartAngle,
                                          float rotaryEndAngle,
                                          juce::Slider& slider)
{
    paintRotarySlider (g, getRotaryRing ({ x, y, width, height }),
                       getRotarySliderState (slider, sliderPosition, rotaryStartAngle, rotaryEndAngle));
}

int PluginLookAndFeel::getSliderThumbRadius (juce::Slider&)
{
    return 1;
}

juce::Label* PluginLookAndFeel::createSliderTextBox (juce::Slider& slider)
{
    return std::make_unique<SliderLabelComp> (slider).release();
}

juce::Slider::SliderLayout PluginLookAndFeel::getSliderLayout (juce::Slider& slider)
{
    return layOutSlider (slider.getWidth(), slider.getHeight(), slider.isRotary());
}

void PluginLookAndFeel::drawCornerResizer (
    juce::Graphics& g, int width, int height, bool isMouseOver, bool isMouseDragging)
{
    const auto groove = findColour (juce::Slider::trackColourId);
    paintCornerResizer (g, width, height, getCornerDotColour (groove, isMouseOver || isMouseDragging));
}

void PluginLookAndFeel::drawResizableFrame (juce::Graphics& g,
                                            int width,
                                            int height,
                                            const juce::BorderSize<int>& border)
{
    constexpr auto contrast = 0.01f;
    paintResizableFrame (g, width, height, border,
                         findColour (juce::PopupMenu::backgroundColourId).contrasting (contrast));
}

void PluginLookAndFeel::positionHeaderComponents (pluginCore::PluginHeaderComponent& header,
                                                  pluginCore::PresetsBar& bar,
                                                  juce::Button&,
                                                  juce::Button&,
                                                  juce::Button& info,
                                                  juce::Button& logo)
{
    const auto areas = layOutHeaderButtons (header.getWidth(), header.getHeight());
    logo.setBounds (areas.logo);
    info.setBounds (areas.info);
    bar.setBounds (header.getPresetsBarArea());
}

void PluginLookAndFeel::positionPresetsBar (pluginCore::PresetsBar& bar,
                                            juce::TextButton& presetsButton,
                                            juce::Button& previousButton,
                                            juce::Button& nextButton)
{
    const auto layout = pluginCore::layOutPresetsBar (bar.getWidth(), bar.getHeight());
    previousButton.setBounds (layout.previousButton);
    presetsButton.setBounds (layout.presetsButton);
    nextButton.setBounds (
        layout.nextButton.withY (layout.previousButton.getY()).withHeight (layout.previousButton.getHeight()));
}
} // namespace cv::varlo
