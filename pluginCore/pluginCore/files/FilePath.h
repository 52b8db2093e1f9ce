#pragma once

#include <juce_core/juce_core.h>

#include <filesystem>
#include <optional>

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

/** A name as a disk or a command line has it, for JUCE, in its very bytes; they may be no UTF-8, as on disks that have
    seen other systems. Nothing for a few names that are none: JUCE makes room for the characters that it reads and then
    copies the bytes, and where it reads the characters as fewer or shorter, it would write beyond its memory. Any
    thread.
*/
std::optional<juce::String> toText (const std::filesystem::path&);

/** The same path for the standard library. */
std::filesystem::path toStandardPath (const juce::File&);
} // namespace cv::pluginCore
