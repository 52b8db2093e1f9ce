#include "pluginCore/files/FileReplacement.h"

#include "support/DiskLog.h"
#include "support/PresetSandbox.h"
#include "support/TestProduct.h"
#include "support/WriteProtection.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace cv::pluginCore
{
namespace
{
using cv::test::DiskLog;

class FileReplacementTest : public testing::Test
{
protected:
    bool replace (const std::string& text) const { return replaceFile (file, text.data(), text.size()); }

    const test::ScratchFolder scratch;
    const juce::File file = scratch.getFile ("a.txt");
};

TEST_F (FileReplacementTest, CreatesReplacesAndEmpties)
{
    for (const auto* const text : { "first", "the second, longer", "3rd", "" })
    {
        EXPECT_TRUE (replace (text));
        EXPECT_EQ (file.loadFileAsString(), text);
        EXPECT_EQ (scratch.getContents(), juce::StringArray ("a.txt"));
    }
}

TEST_F (FileReplacementTest, ContentIsOnTheDiskBeforeItTakesTheName)
{
    replace ("old");
    DiskLog log (scratch.getFolder());
    EXPECT_TRUE (replace (std::string (100000, 'x')));

    const auto events = log.takeEvents();
    ASSERT_EQ (events.size(), 3) << events.joinIntoString ("\n");
    const auto temporary = events[0].fromFirstOccurrenceOf (" ", false, false).upToLastOccurrenceOf (" ", false, false);
    EXPECT_NE (temporary, "a.txt");
    EXPECT_EQ (events[0], "sync " + temporary + " 100000");
    EXPECT_EQ (events[1], "rename " + temporary + " a.txt");
    EXPECT_EQ (events[2], "sync . folder");
}

TEST_F (FileReplacementTest, BrokenDiskLeavesTheOldContent)
{
    replace ("old");
    {
        DiskLog log (scratch.getFolder());
        log.failFromHere();
        EXPECT_FALSE (replace ("new"));
        EXPECT_EQ (log.takeEvents().size(), 1);
    }
    EXPECT_EQ (file.loadFileAsString(), "old");
    EXPECT_EQ (scratch.getContents(), juce::StringArray ("a.txt"));
}

TEST_F (FileReplacementTest, FullDiskLeavesTheOldContent)
{
    // One text that stays in the stream's buffer until the end, one that goes past it.
    for (const auto length : { (size_t) 1000, (size_t) 100000 })
    {
        replace ("old");
        {
            const test::FullDisk fullDisk (100);
            EXPECT_FALSE (replace (std::string (length, 'x')));
        }
        EXPECT_EQ (file.loadFileAsString(), "old");
        EXPECT_EQ (scratch.getContents(), juce::StringArray ("a.txt"));
    }
}

TEST_F (FileReplacementTest, FoldersAndPipesAreNotReplaced)
{
    ASSERT_TRUE (file.createDirectory());
    EXPECT_FALSE (replace ("new"));
    EXPECT_TRUE (file.isDirectory());

    ASSERT_TRUE (file.deleteFile());
    ASSERT_EQ (mkfifo (file.getFullPathName().toRawUTF8(), 0600), 0);
    EXPECT_FALSE (replace ("new"));
    EXPECT_TRUE (file.exists());
    EXPECT_EQ (scratch.getContents(), juce::StringArray ("a.txt"));
}

TEST_F (FileReplacementTest, SavedPresetsAreOnTheDisk)
{
    const test::PresetSandbox sandbox;
    test::TestProduct product (sandbox.getLocations());
    const auto& folder = sandbox.getLocations().userFolder;
    const auto preset = folder.getChildFile ("Echo.test");

    DiskLog log (folder);
    product.getPresetsManager().savePreset (preset, true);

    const auto events = log.takeEvents();
    ASSERT_EQ (events.size(), 3) << events.joinIntoString ("\n");
    EXPECT_TRUE (events[0].endsWith (" " + juce::String (preset.getSize()))) << events[0];
    EXPECT_TRUE (events[1].endsWith (" Echo.test")) << events[1];
    EXPECT_EQ (events[2], "sync . folder");
}
} // namespace
} // namespace cv::pluginCore
