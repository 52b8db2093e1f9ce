#pragma once

#include <juce_core/juce_core.h>

namespace cv::storm
{
/** What this process holds of what the system has only so much of. */
struct ProcessUse
{
    /** As it is now. */
    static ProcessUse measure();

    /** In words, for reports. */
    juce::String toString() const;

    int numThreads = 0;
    int numOpenFiles = 0;

    /** What has been allocated and not been freed, in bytes. */
    juce::int64 heapBytes = 0;
};
} // namespace cv::storm
