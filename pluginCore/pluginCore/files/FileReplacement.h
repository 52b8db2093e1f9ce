#pragma once

#include <juce_core/juce_core.h>

namespace cv::pluginCore
{
/** Gives a file a new content as a whole, or creates it. False if that fails, and what the file held is still whole
    then. Folders, pipes and devices are left alone. After true the new content outlasts a power cut: it is on the
    disk before it takes the file's name, and so is the name, where the system can say that of a folder.

    JUCE's own writing of XML takes a disk that has room for half of the text for success. Waits for the disk; any
    thread but the audio thread.
*/
bool replaceFile (const juce::File&, const void* data, size_t numBytes);
} // namespace cv::pluginCore
