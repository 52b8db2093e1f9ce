#include "pluginCore/presets/PresetsManager.h"

#include "pluginCore/files/FilePath.h"
#include "pluginCore/presets/PresetFile.h"
#include "pluginCore/state/XmlText.h"

namespace cv::pluginCore
{
PresetsManager::PresetsManager (Owner& presetsOwner, const PresetLocations& presetLocations)
    : owner (presetsOwner)
    , locations (presetLocations)
    , lastSaveFolder (presetLocations.userFolder)
{
    for (const auto bank : presetBanks)
        locations.getFolder (bank).createDirectory();
}

void PresetsManager::addListener (Listener* listener)
{
    {
        const juce::SpinLock::ScopedLockType lock (listenersLock);
        listeners.add (listener);
    }

    tellOfDirtyState();
}

void PresetsManager::removeListener (Listener* listener)
{
    {
        const juce::SpinLock::ScopedLockType lock (listenersLock);
        listeners.remove (listener);
    }

    tellOfDirtyState();
}

void PresetsManager::loadPreset (const juce::File& file)
{
    loadingPreset = true;

    if (const auto xml = readPresetFile (file))
    {
        setCurrentPresetFile (file);
        owner.restoreStateXml (*xml, false);
        setDirty (false);
        listeners.call ([&] (Listener& listener) { listener.presetLoaded (*this, file); });
    }

    loadingPreset = false;
}

void PresetsManager::savePreset (const juce::File& file, bool reloadAfterSave)
{
    setCurrentPresetFile (file);
    writeXmlFile (*owner.createStateXml (false), file);

    if (reloadAfterSave)
        loadPreset (file);
    else
        setDirty (false);
}

void PresetsManager::savePresetAs (bool reloadAfterSave)
{
    const auto startFolder = lastSaveFolder.isDirectory() ? lastSaveFolder : locations.userFolder;

    fileChooser = std::make_unique<juce::FileChooser> ("save...", startFolder, "*" + locations.presetExtension);
    fileChooser->launchAsync (juce::FileBrowserComponent::saveMode | juce::FileBrowserComponent::canSelectFiles
                                  | juce::FileBrowserComponent::warnAboutOverwriting,
                              [this, reloadAfterSave] (const juce::FileChooser& chooser)
                              { dialogClosed (chooser.getResult(), reloadAfterSave); });
}

void PresetsManager::dialogClosed (const juce::File& result, bool reloadAfterSave)
{
    const auto wasCancelled = result == juce::File();

    if (wasCancelled)
        return;

    if (isBelowFolder (result, locations.userFolder))
        lastSaveFolder = result.getParentDirectory();

    savePreset (result, reloadAfterSave);
}

const juce::String& PresetsManager::getCompanyName() const noexcept
{
    return owner.getProductInfo().company;
}

void PresetsManager::setCurrentPresetFile (const juce::File& file)
{
    const juce::SpinLock::ScopedLockType lock (currentPresetFileLock);
    currentPresetFile = file;
}

juce::File PresetsManager::getCurrentPresetFile() const
{
    const juce::SpinLock::ScopedLockType lock (currentPresetFileLock);
    return currentPresetFile;
}

void PresetsManager::setDirty (bool shouldBeDirty)
{
    if (dirty.exchange (shouldBeDirty) == shouldBeDirty)
        return;

    dirtyStateIsUntold = true;
    tellOfDirtyState();
}

void PresetsManager::tellOfDirtyState()
{
    // Who doesn't get the lock leaves the telling to its holder, who looks again after it has let it go.
    while (dirtyStateIsUntold)
    {
        const juce::SpinLock::ScopedTryLockType lock (listenersLock);

        if (! lock.isLocked())
            return;

        if (dirtyStateIsUntold.exchange (false))
            listeners.call ([this] (Listener& listener) { listener.dirtyStateChanged (*this, dirty); });
    }
}
} // namespace cv::pluginCore
