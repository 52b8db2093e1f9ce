#include "pluginCore/presetsBar/PresetFiles.h"

#include "pluginCore/presets/PresetFile.h"

namespace cv::pluginCore
{
PresetTree readBank (const juce::File& folder, const juce::String& extension)
{
    return readPresetTree (folder, [&extension] (const juce::File& file, bool isFolder)
                           { return file.hasFileExtension (extension) && (isFolder || isPresetFile (file)); });
}

bool folderHoldsPresets (const juce::File& folder, const juce::String& wildcard)
{
    if (wildcard == "*")
        return readPresetTree (folder, [] (const juce::File&, bool isFolder) { return ! isFolder; }).holdsPresets;

    return readBank (folder, wildcard.trimCharactersAtStart ("*")).holdsPresets;
}

bool isVisiblePreset (const juce::File& file, const juce::String& extension)
{
    return file.hasFileExtension (extension) && ! file.isHidden() && isPresetFile (file);
}
} // namespace cv::pluginCore
