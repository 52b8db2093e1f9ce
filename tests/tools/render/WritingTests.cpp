#include "tools/render/RenderTestSupport.h"

#include <csignal>
#include <sys/stat.h>

namespace cv::render
{
namespace
{
using cv::test::areIdentical;

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr auto isInstrumented = true;
#else
constexpr auto isInstrumented = false;
#endif

class Writing : public RenderTest
{
};

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
    for (const auto signal : { SIGINT, SIGTERM, SIGHUP })
    {
        const auto before = scratch.getContents();
        RenderProcess process (longRender);
        waitForRender (before);
        process.sendSignal (signal);

        const auto result = process.wait();
        EXPECT_EQ (result.exitCode, 130);
        EXPECT_EQ (result.errors, "varlo-render: interrupted; nothing was written\n");
        EXPECT_EQ (scratch.getContents(), before);
    }
}

TEST_F (Writing, SignalsThatTheProgramWasStartedIgnoringStayIgnored)
{
    const auto before = scratch.getContents();
    RenderProcess::Options options;
    options.ignoredSignals = { SIGHUP, SIGINT };
    RenderProcess process (longRender, options);
    waitForRender (before);

    // The signal that is not ignored comes last. Were another one heeded, it would have ended the render by then.
    process.sendSignal (SIGHUP);
    process.sendSignal (SIGINT);
    juce::Thread::sleep (500);
    EXPECT_NE (scratch.getContents(), before);

    process.sendSignal (SIGTERM);
    EXPECT_EQ (process.wait().exitCode, 130);
    EXPECT_EQ (scratch.getContents(), before);
}

TEST_F (Writing, ACrashLeavesNothingButOneLine)
{
    if (isInstrumented)
        GTEST_SKIP() << "sanitizers have handlers of their own";

    for (const auto signal : { SIGSEGV, SIGBUS, SIGFPE, SIGABRT })
    {
        const auto before = scratch.getContents();
        RenderProcess process (longRender);
        waitForRender (before);
        process.sendSignal (signal);

        const auto result = process.wait();
        EXPECT_EQ (result.exitCode, 1);
        EXPECT_TRUE (result.errors.startsWith ("varlo-render: the plug-in crashed (")) << result.errors;
        EXPECT_EQ (result.errors.indexOfChar ('\n'), result.errors.length() - 1) << result.errors;
        EXPECT_EQ (scratch.getContents(), before);
    }
}

TEST_F (Writing, APluginThatCrashesIsOneLine)
{
    if (isInstrumented)
        GTEST_SKIP() << "sanitizers have handlers of their own";

    // The binary is found by the bundle's name.
    const auto bundle = scratch.getFile ("Varlo.vst3");
    juce::File (VARLO_BUNDLE).copyDirectoryTo (bundle);

    for (const auto& library : bundle.findChildFiles (juce::File::findFiles, true, "*.so"))
        ASSERT_TRUE (juce::File (VARLO_CRASHING_PLUGIN).copyFileTo (library));

    const std::map<std::string, juce::String> crashes { { "access", "segmentation fault" },
                                                        { "recursion", "segmentation fault" },
                                                        { "thread", "segmentation fault" },
                                                        { "abort", "aborted" },
                                                        { "exception", "aborted" } };

    for (const auto& [kind, words] : crashes)
    {
        RenderProcess::Options options;
        options.environment["VARLO_CRASH"] = kind;
        const auto result = RenderProcess::run ({ "--list", "--plugin", bundle.getFullPathName() }, options);
        EXPECT_EQ (result.exitCode, 1) << kind;
        EXPECT_EQ (result.errors, "varlo-render: the plug-in crashed (" + words + ")\n") << kind;
        EXPECT_EQ (result.output, juce::String());
    }
}

TEST_F (Writing, NamesMayBeAsLongAsTheDiskTakes)
{
    // In bytes, on all disks that are common; in UTF-8 these are two each.
    constexpr auto maxBytes = 255;
    const auto ofLength = [this] (int numBytes, const juce::String& extension)
    {
        const auto letters = juce::String::repeatedString (juce::String::fromUTF8 ("é"), numBytes / 2);
        const auto name = juce::String ("n") + letters;
        return scratch.getFile (name.substring (0, (numBytes - extension.length()) / 2) + extension);
    };
    const auto wav = ofLength (maxBytes, ".wav");
    const auto flac = ofLength (maxBytes, ".flac");
    const auto state = ofLength (maxBytes, ".bin");
    ASSERT_GT (wav.getFileName().getNumBytesAsUTF8(), maxBytes - 3u);

    RenderProcess::runWell (
        { input.getFullPathName(), "-o", wav.getFullPathName(), "--save-state", state.getFullPathName() });
    RenderProcess::runWell ({ input.getFullPathName(), "-o", flac.getFullPathName() });
    EXPECT_TRUE (wav.existsAsFile());
    EXPECT_TRUE (flac.existsAsFile());
    EXPECT_TRUE (state.existsAsFile());
    EXPECT_EQ (scratch.getContents().size(), 4);

    const auto tooLong = ofLength (maxBytes + 4, ".wav");
    expectError ({ input.getFullPathName(), "-o", tooLong.getFullPathName() }, "the name is too long: ");
    expectError ({ "--save-state", tooLong.getFullPathName() }, "the name is too long: ");
}

TEST_F (Writing, TwoOutputsMayNotShareAFile)
{
    const auto path = output.getFullPathName();
    const juce::String words ("-o and --save-state name the same file: ");
    expectRenderError ({ "--save-state", path }, words + path, 2);
    expectRenderError ({ "--save-state", scratch.getFolder().getFullPathName() + "/./output.wav" }, words + path, 2);

    output.replaceWithText ("old");
    const auto name = scratch.getFile ("state.bin");
    ASSERT_TRUE (output.createSymbolicLink (name, false));
    expectRenderError ({ "--save-state", name.getFullPathName() }, words + path, 2);
    EXPECT_EQ (output.loadFileAsString(), "old");

    const auto folder = scratch.getFile ("folder");
    ASSERT_TRUE (folder.createDirectory());
    ASSERT_TRUE (folder.createSymbolicLink (scratch.getFile ("link"), false));
    expectError ({ input.getFullPathName(), "-o", folder.getChildFile ("o.wav").getFullPathName(), "--save-state",
                   scratch.getFile ("link/o.wav").getFullPathName() },
                 words, 2);

    const auto picture = scratch.getFile ("e.png").getFullPathName();
    expectError ({ input.getFullPathName(), "--editor-png", picture, "--save-state", picture },
                 "--editor-png and --save-state name the same file: ", 2);
}

TEST_F (Writing, AStateTakesNoDevicesPlace)
{
    const auto pipe = scratch.getFile ("pipe");
    ASSERT_EQ (mkfifo (pipe.getFullPathName().toRawUTF8(), 0600), 0);
    expectError ({ "--save-state", pipe.getFullPathName() }, "not a regular file: ");
    expectRenderError ({ "--save-state", pipe.getFullPathName() }, "not a regular file: ");
}
} // namespace
} // namespace cv::render
