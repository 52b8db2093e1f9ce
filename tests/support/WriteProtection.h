#pragma once

#include "support/ScratchFolder.h"

#include <sys/resource.h>

namespace cv::test
{
/** Makes a folder read-only for as long as it lives; for that time an administrator's process is an ordinary
    user's, whom permissions bind. One at a time.
*/
class WriteProtection
{
public:
    explicit WriteProtection (const juce::File& folderToProtect);
    ~WriteProtection();

private:
    const juce::File folder;
    const bool isAdministrator;

    JUCE_DECLARE_NON_COPYABLE (WriteProtection)
};

/** Lets no file of this process grow beyond `maxBytes`, as if the disk were full then. */
class FullDisk
{
public:
    explicit FullDisk (int maxBytes);
    ~FullDisk();

private:
    rlimit formerLimit {};
    void (*formerHandler) (int);

    JUCE_DECLARE_NON_COPYABLE (FullDisk)
};
} // namespace cv::test
