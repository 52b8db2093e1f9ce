#pragma once

#include <juce_core/juce_core.h>

#include <filesystem>

namespace cv::pluginCore
{
/** Whether a file lies below a folder, at any depth, by their paths alone: File::isAChildOf() in one pass.
    JUCE's goes up level by level, with a copy of the path and a call deeper for each, and what a project
    tells of its preset may have a hundred thousand levels. Any thread.
*/
bool isBelowFolder (const juce::File&, const juce::File& folder);

/** True for an existing file that is neither a folder nor a pipe, device or socket, which would keep a reader
    waiting or never end. Links count as what they lead to. Asks the disk. Any thread.
*/
bool isRegularFile (const juce::File&);

/** The same path for the standard library. */
std::filesystem::path toStandardPath (const juce::File&);
} // namespace cv::pluginCore
