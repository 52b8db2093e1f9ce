#pragma once

#include "pluginCore/presetsBar/PresetsBar.h"

#include <functional>

namespace cv::pluginCore
{
/** The strip across the top of an editor: logo, presets bar and an information button. It also has buttons
    for undo and redo, which appear once a look-and-feel gives them a place.

    All four act as soon as the mouse goes down. Paints itself in headerBackgroundColourId, and its icons in
    colours that stand out from that. While its timer runs, which is the owner's choice, the presets bar shows
    its arrows only under the mouse.

    Message thread only.
*/
class PluginHeaderComponent final : public juce::Component, public juce::Timer
{
public:
    /** To be implemented by a look-and-feel that lays the header out in its own way. */
    class LookAndFeelMethods
    {
    public:
        virtual ~LookAndFeelMethods() = default;

        virtual void positionHeaderComponents (PluginHeaderComponent& header,
                                               PresetsBar& bar,
                                               juce::Button& undo,
                                               juce::Button& redo,
                                               juce::Button& info,
                                               juce::Button& logo) = 0;
    };

    /** Both have to outlive the header. Without an undo manager, undo and redo do nothing. */
    PluginHeaderComponent (PresetsManager&, juce::UndoManager*);

    ~PluginHeaderComponent() override;

    void paint (juce::Graphics&) override;
    void resized() override;
    void colourChanged() override;
    void timerCallback() override;

    /** Gives the logo its shape, of juce::Path's own bytes, in the icons' colours of the moment. It keeps them whatever
        the colours become.
    */
    void setLogo (const char* path, int numBytes);

    /** Blank until the owner gives it a shape. */
    juce::DrawableButton& getLogoButton() noexcept { return logoButton; }

    /** Where the presets bar lies in a header of this size, for look-and-feels that have no other place
        for it. In the header's own coordinates.
    */
    juce::Rectangle<int> getPresetsBarArea() const;

    PresetsBar& getPresetsBar() noexcept { return presetsBar; }

    /** What the logo and the information button do. */
    std::function<void()> onLogoClicked;

private:
    void nameButtons();
    void positionComponents();
    void updateButtonImages();
    void setIcon (juce::DrawableButton&, const char* path, int numBytes) const;

    PresetsBar presetsBar;
    juce::DrawableButton undoButton { "undo", juce::DrawableButton::ImageFitted };
    juce::DrawableButton redoButton { "redo", juce::DrawableButton::ImageFitted };
    juce::DrawableButton infoButton { "info", juce::DrawableButton::ImageFitted };
    juce::DrawableButton logoButton { "logo", juce::DrawableButton::ImageFitted };
    juce::UndoManager* const undoManager;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (PluginHeaderComponent)
};
} // namespace cv::pluginCore
