#include "support/WriteProtection.h"

#include <csignal>
#include <sys/stat.h>
#include <unistd.h>

namespace cv::test
{
namespace
{
constexpr uid_t nobody = 65534;
constexpr mode_t readOnly = 0555;
constexpr mode_t writable = 0755;

void setMode (const juce::File& folder, mode_t mode)
{
    chmod (folder.getFullPathName().toRawUTF8(), mode);
}
} // namespace

WriteProtection::WriteProtection (const juce::File& folderToProtect)
    : folder (folderToProtect)
    , isAdministrator (getuid() == 0)
{
    setMode (folder, readOnly);

    // access() asks for the real user, so that has to change too.
    if (isAdministrator && setresuid (nobody, nobody, 0) != 0)
        std::abort();
}

WriteProtection::~WriteProtection()
{
    if (isAdministrator && setresuid (0, 0, 0) != 0)
        std::abort();

    setMode (folder, writable);
}

FullDisk::FullDisk (int maxBytes) : formerHandler (std::signal (SIGXFSZ, SIG_IGN))
{
    getrlimit (RLIMIT_FSIZE, &formerLimit);
    auto limit = formerLimit;
    limit.rlim_cur = (rlim_t) maxBytes;
    setrlimit (RLIMIT_FSIZE, &limit);
}

FullDisk::~FullDisk()
{
    setrlimit (RLIMIT_FSIZE, &formerLimit);
    std::signal (SIGXFSZ, formerHandler);
}
} // namespace cv::test
