#include "support/ScratchFolder.h"

namespace cv::test
{
ScratchFolder::ScratchFolder()
    : folder (juce::File::getSpecialLocation (juce::File::tempDirectory)
                  .getChildFile ("varlo-test-" + juce::Uuid().toDashedString()))
{
    folder.createDirectory();
}

ScratchFolder::~ScratchFolder()
{
    folder.deleteRecursively();
}

juce::StringArray ScratchFolder::getContents() const
{
    juce::StringArray names;

    for (const auto& file : folder.findChildFiles (juce::File::findFilesAndDirectories, true))
        names.add (file.getRelativePathFrom (folder));

    names.sort (false);
    return names;
}
} // namespace cv::test
