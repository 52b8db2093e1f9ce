#pragma once

#include "pluginCore/presets/PresetLocations.h"
#include "pluginCore/product/ProductInfo.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <atomic>

namespace cv::pluginCore
{
/** A plug-in's preset store: it loads and saves preset files, and remembers which one the sound is based
    on and whether the sound has moved away from it since.

    It keeps no list of presets: whoever shows one reads the banks' folders. No failure is reported: a
    file that can't be read changes nothing, one that can't be written is lost.

    Threads: the message thread, except where an operation says otherwise.
*/
class PresetsManager
{
public:
    /** Whose presets they are: a preset holds its state. */
    class Owner
    {
    public:
        virtual ~Owner() = default;

        virtual const ProductInfo& getProductInfo() const noexcept = 0;

        /** The state as an element; with what belongs to a project alone, or without. Any thread but the audio
            thread.
        */
        virtual std::unique_ptr<juce::XmlElement> createStateXml (bool includeEditorState) = 0;

        /** Applies such an element, whatever it holds. Any thread but the audio thread. */
        virtual void restoreStateXml (const juce::XmlElement&, bool includeEditorState) = 0;
    };

    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** A preset file has been read; it is current now, and the sound follows it. Message thread. */
        virtual void presetLoaded (PresetsManager&, const juce::File&) = 0;

        /** The sound has moved away from the current preset, or is what the preset holds again.

            On whatever thread moved a parameter, the audio thread included: do nothing here but hand over to the
            message thread, never wait, and leave the list of listeners alone. The mark may have changed once more
            by then; listeners are told again.
        */
        virtual void dirtyStateChanged (PresetsManager&, bool newDirty) = 0;
    };

    /** Creates the banks' folders where they are missing and can be made. The owner outlives the store, and isn't
        asked anything yet.
    */
    PresetsManager (Owner&, const PresetLocations&);

    /** Once removed, a listener is in no call of dirtyStateChanged() any more. */
    void addListener (Listener*);
    void removeListener (Listener*);

    /** Applies a preset file, which becomes the current one. What is no preset file or no XML changes nothing; another
        plug-in's XML changes only which file is current. A load can't be undone and ends the undo
        history.
    */
    void loadPreset (const juce::File&);

    /** Writes the present sound to a file, which becomes the current one even if it can't be written.
        Afterwards either the file is loaded again or the sound counts as unchanged.
    */
    void savePreset (const juce::File&, bool reloadAfterSave);

    /** Opens a dialog, which asks for the file, and returns at once; savePreset() follows once the user
        has chosen. A dialog that is still open from an earlier call goes away.
    */
    void savePresetAs (bool reloadAfterSave);

    const PresetLocations& getLocations() const noexcept { return locations; }

    /** The maker of the product, whose own presets the FACTORY bank holds. */
    const juce::String& getCompanyName() const noexcept;

    /** Where the next dialog opens: the folder of the last file that a dialog saved inside the USER bank. */
    const juce::File& getLastSaveFolder() const noexcept { return lastSaveFolder; }

    /** The preset that the sound is based on; an empty file stands for none. Any thread but the audio
        thread.
    */
    juce::File getCurrentPresetFile() const;

    /** Whether the sound has changed since the current preset was loaded or saved. Any thread. */
    bool isDirty() const noexcept { return dirty; }

    /** Makes a file current without reading it. For the owner, which restores a project. Any thread but the
        audio thread.
    */
    void setCurrentPresetFile (const juce::File&);

    /** Sets the mark and tells the listeners if that changes it. For the owner. Any thread; waits for nobody: where
        another thread is at the listeners, that one tells them.
    */
    void setDirty (bool shouldBeDirty);

private:
    void dialogClosed (const juce::File& result, bool reloadAfterSave);
    void tellOfDirtyState();

    std::unique_ptr<juce::FileChooser> fileChooser;

    // Several threads may call the listeners at a time, which JUCE's other lists don't allow. Whoever changes the list
    // or tells of the mark holds the lock.
    juce::LightweightListenerList<Listener> listeners;
    juce::SpinLock listenersLock;
    std::atomic<bool> dirtyStateIsUntold { false };

    Owner& owner;
    const PresetLocations locations;
    juce::File currentPresetFile;
    juce::SpinLock currentPresetFileLock; // a project may be opened on another thread than the bar's
    std::atomic<bool> dirty { false };
    juce::File lastSaveFolder;
    std::atomic<bool> loadingPreset { false };

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (PresetsManager)
};
} // namespace cv::pluginCore
