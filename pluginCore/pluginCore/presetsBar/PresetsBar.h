#pragma once

#include "pluginCore/presets/PresetsManager.h"
#include "pluginCore/presetsBar/PresetTree.h"

namespace cv::pluginCore
{
/** A chevron that points right, the outline of a stroke of width 2 with rounded ends, about 9.5 wide and 16.5
    high. To be scaled to where it is drawn. Any thread.
*/
juce::Path createChevronPath();

/** Where the bar's buttons lie, in the bar's own coordinates. */
struct PresetsBarLayout
{
    juce::Rectangle<int> previousButton;
    juce::Rectangle<int> presetsButton;
    juce::Rectangle<int> nextButton;
};

/** The layout of a bar of this size: the arrows as wide as the bar is high, and of them the left one alone a
    sixth lower at the top and the bottom. In a bar that is too narrow the left arrow comes first, then the
    right one. Any thread.
*/
PresetsBarLayout layOutPresetsBar (int width, int height) noexcept;

/** The strip that shows the current preset's name, with a "*" once the sound has changed. The name opens
    a menu of all presets; the arrows on both sides step through them, round and round.

    The menu's list is as old as the last opening of the menu, and the arrows follow it. Paints itself in
    presetsBarBackgroundColourId, and its arrows in colours that stand out from that.

    Threads: the message thread; what it hears from the store may come on any.
*/
class PresetsBar final : public juce::Component,
                         public juce::Button::Listener,
                         public PresetsManager::Listener,
                         public juce::AsyncUpdater
{
public:
    /** To be implemented by a look-and-feel that lays the bar out in its own way. */
    class LookAndFeelMethods
    {
    public:
        virtual ~LookAndFeelMethods() = default;

        virtual void positionPresetsBar (PresetsBar&,
                                         juce::TextButton& presetsButton,
                                         juce::Button& previousButton,
                                         juce::Button& nextButton) = 0;
    };

    /** Component IDs of the arrows, which have no text to be known by. */
    static constexpr auto previousButtonId = "previous";
    static constexpr auto nextButtonId = "next";

    /** Reads the banks' folders. The store has to outlive the bar. */
    explicit PresetsBar (PresetsManager&);

    ~PresetsBar() override;

    void paint (juce::Graphics&) override;
    void resized() override;
    void colourChanged() override;

    /** Opens the menu, after reading the banks' folders again, or steps to the preset before or after
        the current one. Where that is not in the list, both arrows go to the list's first.
    */
    void buttonClicked (juce::Button*) override;

    void presetLoaded (PresetsManager&, const juce::File&) override;
    void dirtyStateChanged (PresetsManager&, bool newDirty) override;

    /** Shows the current preset's name. Without a current preset the text stays as it is. */
    void handleAsyncUpdate() override;

    /** Does what the menu's item stands for. Nothing for 0 and below, nor without a bar. */
    static void menuItemChosen (int result, PresetsBar* bar);

    /** Shows or hides both arrows; they are visible at first. */
    void setArrowsVisible (bool shouldBeVisible);

    /** The menu as it was last built. */
    const juce::PopupMenu& getMenu() const noexcept { return presetsMenu; }

    /** Full paths of the presets in that menu, in its order. */
    const juce::StringArray& getPresetPaths() const noexcept { return presetPaths; }

private:
    void setTabOrder();
    void rebuildMenu();
    void addBankToMenu (const juce::File& folder, const juce::String& title, int& nextItemId);
    void addPresetsToMenu (juce::PopupMenu& menu, const PresetTree& folder, int& nextItemId, juce::StringArray& paths);
    bool canOverwriteCurrentPreset() const;
    void showMenu();
    void loadNeighbour (int step);

    PresetsManager& presetsManager;
    juce::TextButton presetsButton { "Presets..." };
    juce::PopupMenu presetsMenu;
    juce::StringArray presetPaths;
    int firstPresetItemId = 0;
    juce::DrawableButton previousButton { {}, juce::DrawableButton::ImageOnButtonBackground };
    juce::DrawableButton nextButton { {}, juce::DrawableButton::ImageOnButtonBackground };

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (PresetsBar)
};
} // namespace cv::pluginCore
