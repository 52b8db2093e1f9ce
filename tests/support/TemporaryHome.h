#pragma once

#include "support/ScratchFolder.h"

namespace cv::test
{
/** Makes a new, empty folder the user's home for as long as it lives; `juce::File ("~")` follows. One at
    a time, and not while other threads ask for the home.
*/
class TemporaryHome
{
public:
    TemporaryHome();
    ~TemporaryHome();

    const juce::File& getFolder() const noexcept { return folder.getFolder(); }

    juce::File getFile (const juce::String& path) const { return folder.getFile (path); }

private:
    const ScratchFolder folder;
    const juce::String formerHome;

    JUCE_DECLARE_NON_COPYABLE (TemporaryHome)
};
} // namespace cv::test
