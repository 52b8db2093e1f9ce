#include "support/DiskLog.h"

#include <cerrno>
#include <sys/stat.h>

namespace cv::test
{
namespace
{
struct Record
{
    juce::CriticalSection lock;
    juce::File folder;
    juce::StringArray events;
    bool isActive = false;
    bool isBroken = false;

    /** Empty for what lies outside the folder. */
    juce::String nameOf (const juce::File& file) const
    {
        return file == folder || file.isAChildOf (folder) ? file.getRelativePathFrom (folder) : juce::String();
    }

    void noteSync (int descriptor)
    {
        const auto name = nameOf (juce::File ("/proc/self/fd/" + juce::String (descriptor)).getLinkedTarget());

        struct stat status
        {
        };

        if (name.isNotEmpty() && fstat (descriptor, &status) == 0)
            events.add ("sync " + name + " " + (S_ISDIR (status.st_mode) ? "folder" : juce::String (status.st_size)));
    }
};

Record& getRecord()
{
    static Record record;
    return record;
}
} // namespace

DiskLog::DiskLog (const juce::File& folder)
{
    const juce::ScopedLock lock (getRecord().lock);
    getRecord().folder = folder;
    getRecord().events.clear();
    getRecord().isActive = true;
    getRecord().isBroken = false;
}

DiskLog::~DiskLog()
{
    const juce::ScopedLock lock (getRecord().lock);
    getRecord().isActive = false;
}

juce::StringArray DiskLog::takeEvents()
{
    const juce::ScopedLock lock (getRecord().lock);
    return std::exchange (getRecord().events, {});
}

void DiskLog::failFromHere() noexcept
{
    const juce::ScopedLock lock (getRecord().lock);
    getRecord().isBroken = true;
}

// The linker's --wrap sends every call of NAME to __wrap_NAME and __real_NAME to the original.
extern "C"
{
    int __real_fsync (int);
    int __real_rename (const char*, const char*);

    int __wrap_fsync (int descriptor)
    {
        const juce::ScopedLock lock (getRecord().lock);

        if (! getRecord().isActive)
            return __real_fsync (descriptor);

        getRecord().noteSync (descriptor);

        if (! getRecord().isBroken)
            return __real_fsync (descriptor);

        errno = EIO;
        return -1;
    }

    int __wrap_rename (const char* from, const char* to)
    {
        const juce::ScopedLock lock (getRecord().lock);

        if (getRecord().isActive)
            getRecord().events.add ("rename " + getRecord().nameOf (juce::File (juce::CharPointer_UTF8 (from))) + " "
                                    + getRecord().nameOf (juce::File (juce::CharPointer_UTF8 (to))));

        return __real_rename (from, to);
    }
}
} // namespace cv::test
