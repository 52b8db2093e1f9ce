#include "tools/render/RenderTestSupport.h"

#include <csignal>

namespace cv::render
{
namespace
{
using cv::test::areIdentical;
using Writing = RenderTest;

TEST_F (Writing, ReplacesTheOutputAndLeavesNothingBesideIt)
{
    output.replaceWithText ("what was there before");
    EXPECT_EQ (renderWell ({}).samples.getNumChannels(), 2);
    EXPECT_EQ (scratch.getContents(), juce::StringArray ({ "input.wav", "output.wav" }));
}

TEST_F (Writing, InputAndOutputMayBeTheSameFile)
{
    const juce::StringArray settings { "--set", "Delay=20", "--tail", "0.1", "--bits", "32f" };
    const auto reference = renderWell (settings);

    juce::StringArray arguments { input.getFullPathName(), "-o", input.getFullPathName() };
    arguments.addArray (settings);
    RenderProcess::runWell (arguments);
    EXPECT_TRUE (areIdentical (AudioFile::read (input).samples, reference.samples));
}

TEST_F (Writing, FullDiskLeavesNothing)
{
    // 5.1 s of stereo are 1.3 MB in 24 bits, and noise does not shrink; at the last of these limits
    // only the file's very end is missing.
    const auto whole = scratch.getFile ("whole.wav");
    RenderProcess::runWell ({ input.getFullPathName(), "-o", whole.getFullPathName() });

    for (const auto* name : { "full.wav", "full.flac" })
    {
        for (const auto limit : { (size_t) 1000, (size_t) 20000, (size_t) whole.getSize() - 1 })
        {
            const auto isFlac = juce::String (name).endsWith ("flac");

            if (isFlac && limit > 20000)
                continue;

            const auto before = scratch.getContents();
            RenderProcess::Options options;
            options.maxFileSize = limit;
            const auto result = RenderProcess::run (
                { input.getFullPathName(), "-o", scratch.getFile (name).getFullPathName() }, options);

            EXPECT_EQ (result.exitCode, 1) << name << " " << limit;
            EXPECT_TRUE (result.errors.startsWith ("varlo-render: can't write ")) << result.errors;
            EXPECT_EQ (result.output, juce::String());
            EXPECT_EQ (scratch.getContents(), before) << name << " " << limit;
        }
    }
}

TEST_F (Writing, FullDiskKeepsWhatWasThereBefore)
{
    output.replaceWithText ("what was there before");
    RenderProcess::Options options;
    options.maxFileSize = 20000;

    EXPECT_EQ (RenderProcess::run ({ input.getFullPathName(), "-o", output.getFullPathName() }, options).exitCode, 1);
    EXPECT_EQ (output.loadFileAsString(), "what was there before");
}

TEST_F (Writing, InterruptionLeavesNothing)
{
    for (const auto signal : { SIGINT, SIGTERM })
    {
        const auto before = scratch.getContents();

        // An hour in blocks of one sample takes longer than this test waits.
        RenderProcess process (
            { input.getFullPathName(), "-o", output.getFullPathName(), "--tail", "3600", "--block", "1" });

        for (auto i = 0; i < 1000 && scratch.getContents() == before; ++i)
            juce::Thread::sleep (10);

        EXPECT_NE (scratch.getContents(), before) << "the render never began";
        process.sendSignal (signal);

        const auto result = process.wait();
        EXPECT_EQ (result.exitCode, 130);
        EXPECT_EQ (result.errors, "varlo-render: interrupted; nothing was written\n");
        EXPECT_EQ (scratch.getContents(), before);
    }
}
} // namespace
} // namespace cv::render
