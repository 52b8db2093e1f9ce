#pragma once

#include "pluginCore/editor/DefaultLookAndFeel.h"
#include "pluginCore/editor/FocusRing.h"
#include "pluginCore/editor/PluginMoveDetector.h"
#include "pluginCore/editor/WindowFrontListener.h"
#include "pluginCore/lookAndFeel/LookAndFeel.h"
#include "pluginCore/panels/UpdateChangeLogComponent.h"
#include "pluginCore/sharing/PluginGlobalSettings.h"
#include "pluginCore/updates/UpdateChecker.h"

#include <juce_audio_processors/juce_audio_processors.h>

namespace cv::pluginCore
{
class PluginProcessor;

/** What every product's window has: the shared look, a size that fits the screen and is remembered, a corner to
    drag, a ring around what has the keyboard, the question for a newer version, and menus that close when the
    window moves or loses the foreground.
    A product derives its editor from it and adds the controls.

    A size that the user drags at the corner becomes the default for new instances; one that comes from the host
    is this instance's own. Message thread only.
*/
class PluginEditor : public juce::AudioProcessorEditor,
                     public UpdateChecker::Listener,
                     public PluginMoveDetector::Listener
{
public:
    /** In logical pixels. */
    struct SizeLimits
    {
        int minWidth;
        int minHeight;
        int maxWidth;
        int maxHeight;
    };

    /** The processor outlives the editor. The size is set by open(). */
    explicit PluginEditor (PluginProcessor&);

    ~PluginEditor() override;

    /** To be called once, right after construction: takes the remembered size and asks for a newer version, at
        most once a day.
    */
    void open();

    virtual SizeLimits getEditorSizeLimits() const = 0;

    /** The fixed width for a height of 1. */
    virtual double getEditorAspectRatio() const = 0;

    /** The side of the square in the corner that the user drags, in logical pixels. */
    virtual int getResizerSize() const;

    void versionCheckFinished (UpdateChecker&, bool updateAvailable, juce::int64 releaseTimeMilliseconds) override;
    void changeLogReady (UpdateChecker&, const juce::String& text) override;

    void hostFocusChanged (PluginMoveDetector&, bool lostForeground) override;
    void pluginMoved (PluginMoveDetector&) override;

    void pluginDensityChanged (PluginMoveDetector&, bool) override {}

    void mouseDown (const juce::MouseEvent&) override {}

    void focusLost (FocusChangeType) override;

    /** The host's index of the parameter whose ID the component carries as its own; -1 if there is none. */
    int getControlParameterIndex (juce::Component&) override;

private:
    using DefaultPluginLookAndFeel = DefaultLookAndFeel<LookAndFeel>;

    /** Tells the editor of its own resizing, a product's resized() being the product's. */
    class PluginEditorListener final : public juce::ComponentListener
    {
    public:
        explicit PluginEditorListener (PluginEditor& owner) : editor (owner) {}

        void componentMovedOrResized (juce::Component&, bool wasMoved, bool wasResized) override;

    private:
        PluginEditor& editor;
    };

    void askForUpdates();
    void takeRememberedSize();
    void editorResized();
    bool fitIntoDisplay();
    void placeCornerResizer();
    void rememberSize (bool asDefault);

    void showChangeLog();
    void hideChangeLog();

    juce::String getSetting (const juce::Identifier& key, const juce::String& defaultText) const;
    void setSetting (const juce::Identifier& key, juce::int64 value);

    const std::shared_ptr<DefaultPluginLookAndFeel> lookAndFeelHolder = DefaultPluginLookAndFeel::getShared();
    PluginEditorListener editorListener { *this };
    const PluginGlobalSettings globalSettings;
    PluginProcessor& pluginProcessor;
    UpdateChangeLogComponent changeLogView;
    PluginMoveDetector moveDetector { *this };

    // A click may open a menu. What has moved until then is no reason to close it: the click can be what brings the
    // host's process to the foreground, or come before the detector's first tick.
    const WindowFrontListener frontListener { *this, [this] { moveDetector.timerCallback(); } };
    juce::ComponentBoundsConstrainer sizeConstrainer;
    juce::ResizableCornerComponent cornerResizer { this, &sizeConstrainer };

    const bool checkForUpdates;
    const juce::int64 lastVersionCheck;  // milliseconds since 1970
    const juce::int64 lastChangeLogTime; // milliseconds since 1970

    UpdateChecker updateChecker;
    FocusRing focusRing { *this };

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (PluginEditor)
};
} // namespace cv::pluginCore
