#include "pluginCore/presets/PresetFile.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace cv::pluginCore
{
namespace
{
class PresetFileTest : public testing::Test
{
protected:
    juce::File write (const juce::String& text) const
    {
        const auto file = scratch.getFile ("a.test");
        file.replaceWithText (text);
        return file;
    }

    const test::ScratchFolder scratch;
};

TEST_F (PresetFileTest, ReadsXml)
{
    const auto xml = readPresetFile (write ("<A b='c'/>"));
    ASSERT_NE (xml, nullptr);
    EXPECT_EQ (xml->getStringAttribute ("b"), "c");

    EXPECT_EQ (readPresetFile (write ("text")), nullptr);
    EXPECT_EQ (readPresetFile (write ("")), nullptr);
}

TEST_F (PresetFileTest, ReadsUpToOneMebibyte)
{
    const juce::String element = "<A/>";
    const auto fill = juce::String::repeatedString (" ", (int) maxPresetBytes - element.length());
    EXPECT_NE (readPresetFile (write (element + fill)), nullptr);
    EXPECT_EQ (readPresetFile (write (element + fill + " ")), nullptr);
}

TEST_F (PresetFileTest, WaitsForNoPipeAndFillsNoMemoryFromADevice)
{
    const auto pipe = scratch.getFile ("pipe.test");
    const auto link = scratch.getFile ("zero.test");
    ASSERT_EQ (mkfifo (pipe.getFullPathName().toRawUTF8(), 0600), 0);
    ASSERT_TRUE (juce::File::createSymbolicLink (link, "/dev/zero", false));

    // The last one is an empty file by its size, and without an end.
    for (const auto& file : { pipe, link, juce::File ("/dev/zero"), scratch.getFolder(), scratch.getFile ("missing"),
                              juce::File(), juce::File ("/proc/kmsg") })
        EXPECT_EQ (readPresetFile (file), nullptr) << file.getFullPathName();
}
} // namespace
} // namespace cv::pluginCore
