#pragma once

#include "pluginCore/editor/PluginHeaderComponent.h"
#include "pluginCore/lookAndFeel/LookAndFeel.h"
#include "varlo/lookAndFeel/Fonts.h"
#include "varlo/lookAndFeel/SliderLabelComp.h"

namespace cv::varlo
{
/** The face of the plug-in: a near-black panel, light grey text, one teal accent. Sizes are proportions of the
    control, so that the window can be drawn in any size.

    Drawing follows the properties of components that Markers.h names, the framework's and the product's.

    A button whose text begins with "Tap" has its caption one logical pixel higher and without side margins.

    Message thread.
*/
class PluginLookAndFeel final : public pluginCore::LookAndFeel,
                                public pluginCore::PluginHeaderComponent::LookAndFeelMethods,
                                public pluginCore::PresetsBar::LookAndFeelMethods
{
public:
    using Fonts = varlo::Fonts;
    using SliderLabelComp = varlo::SliderLabelComp;

    PluginLookAndFeel();

    // These take the place of the framework's fonts of the same names, which menus still use.
    JUCE_BEGIN_IGNORE_WARNINGS_GCC_LIKE ("-Wshadow-field")
    const std::shared_ptr<Fonts> fonts = Fonts::getShared();
    juce::Font lightFont = fonts->light;
    juce::Font regularFont = fonts->regular;
    juce::Font mediumFont = fonts->medium; // labels and buttons
    JUCE_END_IGNORE_WARNINGS_GCC_LIKE

    void drawButtonBackground (
        juce::Graphics&, juce::Button&, const juce::Colour& background, bool isHighlighted, bool isDown) override;
    juce::Font getTextButtonFont (juce::TextButton&, int buttonHeight) override;
    void drawButtonText (juce::Graphics&, juce::TextButton&, bool isHighlighted, bool isDown) override;

    /** Draws the shadow alone; the image draws itself. */
    void drawDrawableButton (juce::Graphics&, juce::DrawableButton&, bool isHighlighted, bool isDown) override;

    void drawPopupMenuBackground (juce::Graphics&, int width, int height) override;

    /** Items with an icon keep JUCE's look. */
    void drawPopupMenuItem (juce::Graphics&,
                            const juce::Rectangle<int>& area,
                            bool isSeparator,
                            bool isActive,
                            bool isHighlighted,
                            bool isTicked,
                            bool hasSubMenu,
                            const juce::String& text,
                            const juce::String& shortcutText,
                            const juce::Drawable* icon,
                            const juce::Colour* textColour) override;

    void drawPopupMenuSectionHeader (juce::Graphics&,
                                     const juce::Rectangle<int>& area,
                                     const juce::String& sectionName) override;

    /** Menus grow with the editor. */
    juce::Font getPopupMenuFont() override;

    void getIdealPopupMenuItemSize (const juce::String& text,
                                    bool isSeparator,
                                    int standardMenuItemHeight,
                                    int& idealWidth,
                                    int& idealHeight) override;
    int getPopupMenuBorderSize() override;

    /** Lets the editor show at the round corners of its menus. Where windows can't be translucent JUCE takes
        menus for opaque, even those that are no windows.
    */
    void preparePopupMenuWindow (juce::Component&) override;

    void drawLabel (juce::Graphics&, juce::Label&) override;
    juce::Font getLabelFont (juce::Label&) override;

    void drawLinearSlider (juce::Graphics&,
                           int x,
                           int y,
                           int width,
                           int height,
                           float sliderPosition,
                           float minSliderPosition,
                           float maxSliderPosition,
                           juce::Slider::SliderStyle,
                           juce::Slider&) override;
    void drawRotarySlider (juce::Graphics&,
                           int x,
                           int y,
                           int width,
                           int height,
                           float sliderPosition,
                           float rotaryStartAngle,
                           float rotaryEndAngle,
                           juce::Slider&) override;
    int getSliderThumbRadius (juce::Slider&) override;
    juce::Label* createSliderTextBox (juce::Slider&) override;
    juce::Slider::SliderLayout getSliderLayout (juce::Slider&) override;

    void drawCornerResizer (juce::Graphics&, int width, int height, bool isMouseOver, bool isMouseDragging) override;
    void drawResizableFrame (juce::Graphics&, int width, int height, const juce::BorderSize<int>&) override;

    /** Undo and redo get no place. */
    void positionHeaderComponents (pluginCore::PluginHeaderComponent& header,
                                   pluginCore::PresetsBar& bar,
                                   juce::Button& undo,
                                   juce::Button& redo,
                                   juce::Button& info,
                                   juce::Button& logo) override;

    /** Both arrows are lower than the bar. */
    void positionPresetsBar (pluginCore::PresetsBar&,
                             juce::TextButton& presetsButton,
                             juce::Button& previousButton,
                             juce::Button& nextButton) override;

private:
    void setPalette();

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (PluginLookAndFeel)
};
} // namespace cv::varlo
