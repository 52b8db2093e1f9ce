#include "pluginCore/presetsBar/PresetTree.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace cv::pluginCore
{
namespace
{
class PresetFilesTest : public testing::Test
{
protected:
    /** Makes an empty file and the folders above it. */
    juce::File make (const juce::String& path)
    {
        const auto file = scratch.getFile (path);
        EXPECT_TRUE (file.create()) << path;
        return file;
    }

    const test::ScratchFolder scratch;
};

TEST_F (PresetFilesTest, FindsPresetsAtAnyDepth)
{
    make ("a/b/c/d.test");

    for (const auto* const folder : { "", "a", "a/b", "a/b/c" })
        EXPECT_TRUE (folderHoldsPresets (scratch.getFile (folder), "*.test")) << folder;
}

TEST_F (PresetFilesTest, OtherFilesAreNoPresets)
{
    make ("a/b.txt");
    make ("a/test");
    scratch.getFile ("a/empty").createDirectory();

    EXPECT_FALSE (folderHoldsPresets (scratch.getFolder(), "*.test"));
    EXPECT_TRUE (folderHoldsPresets (scratch.getFolder(), "*"));
    EXPECT_FALSE (folderHoldsPresets (scratch.getFile ("a/empty"), "*"));
    EXPECT_FALSE (folderHoldsPresets (scratch.getFile ("a/b.txt"), "*"));
    EXPECT_FALSE (folderHoldsPresets (scratch.getFile ("missing"), "*"));
    EXPECT_FALSE (folderHoldsPresets ({}, "*"));
}

TEST_F (PresetFilesTest, HiddenPresetsCount)
{
    make ("a/.b.test");
    make ("c/.d/e.test");
    EXPECT_TRUE (folderHoldsPresets (scratch.getFile ("a"), "*.test"));
    EXPECT_TRUE (folderHoldsPresets (scratch.getFile ("c"), "*.test"));
}

TEST_F (PresetFilesTest, LinksInCirclesEnd)
{
    const auto folder = scratch.getFile ("a");
    folder.createDirectory();

    for (const auto* const name : { "self", "up", "down" })
        ASSERT_TRUE (juce::File::createSymbolicLink (folder.getChildFile (name), "../a", false));

    EXPECT_FALSE (folderHoldsPresets (folder, "*.test"));
    EXPECT_FALSE (folderHoldsPresets (folder, "*"));
}

TEST_F (PresetFilesTest, TellsVisiblePresets)
{
    EXPECT_TRUE (isVisiblePreset (make ("a.test"), ".test"));
    EXPECT_TRUE (isVisiblePreset (make ("b.TEST"), ".test"));
    EXPECT_FALSE (isVisiblePreset (make (".c.test"), ".test"));
    EXPECT_FALSE (isVisiblePreset (make ("d.txt"), ".test"));
    EXPECT_FALSE (isVisiblePreset (scratch.getFile ("missing.test"), ".test"));

    const auto folder = scratch.getFile ("e.test");
    folder.createDirectory();
    EXPECT_FALSE (isVisiblePreset (folder, ".test"));
}
} // namespace
} // namespace cv::pluginCore
