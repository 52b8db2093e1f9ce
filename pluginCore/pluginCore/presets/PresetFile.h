#pragma once

#include <juce_core/juce_core.h>

namespace cv::pluginCore
{
/** A file that is larger is no preset. Ours have half a kilobyte; this leaves room for what a product may keep
    beside its parameters, and is read in no time even from a slow disk.
*/
constexpr juce::int64 maxPresetBytes = 1024 * 1024;

/** True for an existing regular file that isn't too large for a preset. Its name and content are not looked
    at. Asks the disk. Any thread.
*/
bool isPresetFile (const juce::File&);

/** Reads a preset's element; null for what is no preset file or holds no element. Never waits for more than the
    disk. Any thread but the audio thread.
*/
std::unique_ptr<juce::XmlElement> readPresetFile (const juce::File&);
} // namespace cv::pluginCore
