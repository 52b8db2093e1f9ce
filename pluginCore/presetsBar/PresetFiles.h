#pragma once

#include <juce_core/juce_core.h>

namespace cv::pluginCore
{
/** Whether a folder, or any folder below it, holds a file of this kind, hidden ones included.

    The wildcard is "*", for any file, or "*" and an extension with its point. Reads the disk. Any thread.
*/
bool folderHoldsPresets (const juce::File& folder, const juce::String& wildcard);

/** True for an existing, visible file with the extension, which comes with its point. Any thread. */
bool isVisiblePreset (const juce::File&, const juce::String& extension);

/** True for a symbolic link to a folder above itself, which would lead round in circles. Any thread. */
bool isLinkToOwnParent (const juce::File& folder);
} // namespace cv::pluginCore
