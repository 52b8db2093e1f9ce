#include "support/ScratchFolder.h"

#include <gtest/gtest.h>
#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::test
{
namespace
{
/** The program that makes stored paths of SVG files, with a file to read and one to write. */
class SvgToPathTest : public testing::Test
{
protected:
    /** Runs it and returns what it prints. */
    juce::String run (const juce::String& svg)
    {
        EXPECT_TRUE (input.replaceWithText (svg));
        output.deleteFile();

        juce::ChildProcess process;
        EXPECT_TRUE (
            process.start (juce::StringArray { VARLO_SVG_TO_PATH, input.getFullPathName(), output.getFullPathName() }));
        const auto text = process.readAllProcessOutput();
        process.waitForProcessToFinish (10000);
        exitCode = process.getExitCode();
        return text;
    }

    /** The path that it makes, as text. */
    juce::String convert (const juce::String& svg)
    {
        EXPECT_EQ (run (svg), "");
        EXPECT_EQ (exitCode, 0u);

        juce::MemoryBlock block;
        EXPECT_TRUE (output.loadFileAsData (block));
        juce::Path path;
        path.loadPathFromData (block.getData(), block.getSize());
        return path.toString();
    }

    const ScratchFolder scratch;
    const juce::File input = scratch.getFile ("in.svg");
    const juce::File output = scratch.getFile ("out.path");
    juce::uint32 exitCode = 0;
};

TEST_F (SvgToPathTest, ReadsPathsAsJuceDoes)
{
    for (const auto* const text : {
             "M1 2L3 4Z",
             "M1,2 3,4 5,6z",
             "m1-2.5.5+3l1e1-2e-1",
             "m1 1 2 2 3 3z l1 1",
             "M0 0H10V20h-5v-5Z",
             "M0 0 H 1 2 3 V 4 5",
             "M0 0C1 2 3 4 5 6S7 8 9 10s1 1 2 2",
             "M1 1S3 4 5 6",
             "M1 1c1 2 3 4 5 6 1 2 3 4 5 6",
             "M0 0Q1 2 3 4T5 6t7 8",
             "M2 2q1 2 3 4z m1 1l2 2",
             "  M\n1\t2\r\nL 3 , 4  ",
         })
        EXPECT_EQ (convert (juce::String ("<svg><path d=\"") + text + "\"/></svg>"),
                   juce::Drawable::parseSVGPath (text).toString())
            << text;
}

TEST_F (SvgToPathTest, JoinsPathsAndKeepsThePicturesCorners)
{
    EXPECT_EQ (
        convert ("<?xml version=\"1.0\"?>\n<svg viewBox=\"-1 -2 30 40\">\n<g><path id=\"a\"\nd=\"M1 1L2 2\"/></g>"
                 "<path fill=\"red\" d=\"M3 3L4 4\"/></svg>"),
        "m -1 -2 29 38 1 1 l 2 2 m 3 3 l 4 4");
}

TEST_F (SvgToPathTest, KnowsBothFillRules)
{
    EXPECT_EQ (convert ("<svg><path fill-rule=\"nonzero\" d=\"M1 1L2 2\"/></svg>"), "m 1 1 l 2 2");
    EXPECT_EQ (convert ("<svg><path fill-rule=\"evenodd\" d=\"M1 1L2 2\"/></svg>"), "a m 1 1 l 2 2");
}

TEST_F (SvgToPathTest, RefusesWhatItDoesNotKnow)
{
    for (const auto* const svg : {
             "",
             "<svg><circle r=\"3\"/></svg>",
             "<svg><path d=\"M0 0A1 1 0 0 0 2 2\"/></svg>",
             "<svg><path d=\"M0\"/></svg>",
             "<svg><path d=\"M0 x\"/></svg>",
             "<svg><path d=\"1 2\"/></svg>",
             "<svg><path d=\"M0 0Z 3 4\"/></svg>",
             "<svg><path d=\"M0 0L1 -\"/></svg>",
             "<svg viewBox=\"0 0 1\"><path d=\"M0 0L1 1\"/></svg>",
         })
    {
        EXPECT_TRUE (run (svg).startsWith (input.getFullPathName())) << svg;
        EXPECT_EQ (exitCode, 1u) << svg;
        EXPECT_FALSE (output.exists()) << svg;
    }
}
} // namespace
} // namespace cv::test
