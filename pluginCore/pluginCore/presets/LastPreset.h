#pragma once

#include "pluginCore/presets/PresetsManager.h"

namespace cv::pluginCore
{
/** What a project remembers of its preset: the bank and the path within, so that another user's machine
    finds it in that user's folders, and whether the sound had moved away from it.
*/
struct LastPreset
{
    /** None: the project doesn't say which, since it had none or one outside all banks, or its path is longer
        than any file's.
    */
    std::optional<juce::File> file;

    /** None: the project doesn't say. */
    std::optional<bool> dirty;
};

/** The element "lastPreset" for a project; null while no preset is current. */
std::unique_ptr<juce::XmlElement> createLastPresetXml (const PresetsManager&);

/** Reads the element from a project's. Whether the file exists is not asked. */
LastPreset readLastPresetXml (const juce::XmlElement& projectXml, const PresetLocations&);
} // namespace cv::pluginCore
