#include "presetsBar/PresetFiles.h"

namespace cv::pluginCore
{
bool folderHoldsPresets (const juce::File& folder, const juce::String& wildcard)
{
    using Iterator = juce::RangedDirectoryIterator;

    if (! folder.isDirectory() || isLinkToOwnParent (folder))
        return false;

    if (wildcard == "*")
        return Iterator (folder, true, "*", juce::File::findFiles, juce::File::FollowSymlinks::noCycles) != Iterator();

    const auto extension = wildcard.trimCharactersAtStart ("*");

    for (const auto& entry : Iterator (folder, false, "*", juce::File::findFilesAndDirectories))
        if (entry.getFile().hasFileExtension (extension) || folderHoldsPresets (entry.getFile(), wildcard))
            return true;

    return false;
}

bool isVisiblePreset (const juce::File& file, const juce::String& extension)
{
    return file.existsAsFile() && ! file.isHidden() && file.hasFileExtension (extension);
}

bool isLinkToOwnParent (const juce::File& folder)
{
    return folder.isSymbolicLink() && folder.isAChildOf (folder.getLinkedTarget());
}
} // namespace cv::pluginCore
