#pragma once

#include "pluginCore/presetsBar/PresetTree.h"

namespace cv::pluginCore
{
/** The presets of a bank; their extension comes with its point. A folder with the extension shows that there
    are presets, as a preset does. Reads the disk. Any thread.
*/
PresetTree readBank (const juce::File& folder, const juce::String& extension);

/** Whether a folder, or any folder below it, holds a file of this kind, hidden ones included.

    The wildcard is "*", for any file, or "*" and an extension with its point. Reads the disk. Any thread.
*/
bool folderHoldsPresets (const juce::File& folder, const juce::String& wildcard);

/** True for an existing, visible preset file with the extension, which comes with its point. Any thread. */
bool isVisiblePreset (const juce::File&, const juce::String& extension);
} // namespace cv::pluginCore
