#include "pluginCore/presets/PresetFile.h"

#include "pluginCore/files/FilePath.h"
#include "pluginCore/state/XmlText.h"

namespace cv::pluginCore
{
bool isPresetFile (const juce::File& file)
{
    return isRegularFile (file) && file.getSize() <= maxPresetBytes;
}

std::unique_ptr<juce::XmlElement> readPresetFile (const juce::File& file)
{
    // Some files of the system's say that they are empty and keep a reader waiting.
    if (! isPresetFile (file) || file.getSize() == 0)
        return {};

    return parseXmlFile (file);
}
} // namespace cv::pluginCore
