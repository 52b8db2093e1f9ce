#pragma once

#include <juce_core/juce_core.h>

#include <functional>
#include <vector>

namespace cv::pluginCore
{
/** What counts as a preset, by a file's or folder's path; see readPresetTree(). */
using IsPreset = std::function<bool (const juce::File&, bool isFolder)>;

/** A folder of presets as a menu shows it: visible presets, and visible folders that hold presets. */
struct PresetTree
{
    /** The folder, or the preset. */
    juce::File file;

    bool isFolder = true;

    /** Whether there is a preset in the folder, at any depth, hidden ones included. */
    bool holdsPresets = false;

    /** Folders and presets mixed, in the natural order of their names. */
    std::vector<PresetTree> children {};
};

/** Folders that are nested deeper below a bank are not read. Far more than people make; within it a path
    stays shorter than systems allow.
*/
constexpr int maxPresetFolderDepth = 32;

/** Reading ends after so many files and folders: a link may lead to a whole disk. Twice the largest bank that
    has to work, 50,000 presets; they take about half a second.
*/
constexpr int maxPresetFolderEntries = 100000;

/** Reads a folder and all below it once, in a time that grows with what lies there.

    Each folder is read once, wherever links lead: first those that lie below the first folder themselves,
    level by level, then those that only links lead to. So links in circles, or to what is shown anyway, add
    nothing. Empty for what is no folder. Reads the disk. Any thread.
*/
PresetTree readPresetTree (const juce::File& folder, const IsPreset&, int maxEntries = maxPresetFolderEntries);

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
