#include "storm/ProcessUse.h"

#include <malloc.h>

namespace cv::storm
{
namespace
{
int countEntries (const char* folder)
{
    return juce::File (folder).getNumberOfChildFiles (juce::File::findFilesAndDirectories);
}
} // namespace

ProcessUse ProcessUse::measure()
{
    ProcessUse use;

    // The folder that is being read is open for that long, each time.
    use.numThreads = countEntries ("/proc/self/task");
    use.numOpenFiles = countEntries ("/proc/self/fd");

    const auto heap = mallinfo2();
    use.heapBytes = (juce::int64) (heap.uordblks + heap.hblkhd);
    return use;
}

juce::String ProcessUse::toString() const
{
    constexpr auto bytesPerMegabyte = 1024.0 * 1024.0;

    return juce::String (numThreads) + " threads, " + juce::String (numOpenFiles) + " open files, "
           + juce::String ((double) heapBytes / bytesPerMegabyte, 2) + " MB of heap";
}
} // namespace cv::storm
