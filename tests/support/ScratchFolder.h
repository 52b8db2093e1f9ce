#pragma once

#include <juce_core/juce_core.h>

namespace cv::test
{
/** A new, empty folder under the system's one for temporary files; it goes with all that is in it. */
class ScratchFolder
{
public:
    ScratchFolder();
    ~ScratchFolder();

    const juce::File& getFolder() const noexcept { return folder; }

    juce::File getFile (const juce::String& name) const { return folder.getChildFile (name); }

    /** The names of all files and folders anywhere below, hidden ones too, sorted. */
    juce::StringArray getContents() const;

private:
    juce::File folder;

    JUCE_DECLARE_NON_COPYABLE (ScratchFolder)
};
} // namespace cv::test
