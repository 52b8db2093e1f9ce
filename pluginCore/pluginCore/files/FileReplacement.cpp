#include "pluginCore/files/FileReplacement.h"

#include "pluginCore/files/FilePath.h"

#if ! JUCE_WINDOWS
    #include <fcntl.h>
    #include <unistd.h>
#endif

namespace cv::pluginCore
{
namespace
{
/** True when all of it is on the disk. */
bool writeToDisk (const juce::File& file, const void* data, size_t numBytes)
{
    juce::FileOutputStream stream (file);

    if (! stream.openedOk() || ! stream.write (data, numBytes))
        return false;

    // Waits for the disk, and is the first to know of a write that failed behind the stream's buffer.
    stream.flush();
    return stream.getStatus().wasOk() && file.getSize() == (juce::int64) numBytes;
}

/** Has a folder's new names outlast a power cut. A folder that may not be read can't be told so; its files are
    whole even then, under the old name or the new.
*/
void writeNamesToDisk ([[maybe_unused]] const juce::File& folder)
{
#if ! JUCE_WINDOWS
    const auto descriptor = open (folder.getFullPathName().toRawUTF8(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);

    if (descriptor < 0)
        return;

    fsync (descriptor);
    close (descriptor);
#endif
}
} // namespace

bool replaceFile (const juce::File& file, const void* data, size_t numBytes)
{
    if (file.exists() && ! isRegularFile (file))
        return false;

    const juce::TemporaryFile temporary (file);

    if (! writeToDisk (temporary.getFile(), data, numBytes) || ! temporary.overwriteTargetFileWithTemporary())
        return false;

    writeNamesToDisk (file.getParentDirectory());
    return true;
}
} // namespace cv::pluginCore
