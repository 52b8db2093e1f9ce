#pragma once

#include <juce_core/juce_core.h>

namespace cv::test
{
/** Notes, in their order, what this process asks the disk to keep, while it lives:

        sync <path> <size>        a file or folder, with its size in bytes at that moment ("folder" for one)
        rename <path> <path>      from and to

    Paths are relative to a folder; what happens outside it is not noted. One at a time. Any thread may ask.
*/
class DiskLog
{
public:
    explicit DiskLog (const juce::File& folder);
    ~DiskLog();

    juce::StringArray takeEvents();

    /** From here on each attempt to keep a file or folder fails as on a broken disk. */
    void failFromHere() noexcept;

private:
    JUCE_DECLARE_NON_COPYABLE (DiskLog)
};
} // namespace cv::test
