#include "tools/render/RenderTestSupport.h"

#include <regex>

namespace cv::render
{
namespace
{
using Console = RenderTest;

TEST_F (Console, SummaryTellsWhatWasWritten)
{
    const auto result = RenderProcess::runWell ({ input.getFullPathName(), "-o", output.getFullPathName() });

    // 4410 samples are 0.1 s, and the tail is 5 s.
    EXPECT_TRUE (result.output.startsWith (output.getFullPathName() + ": 5.10 s, stereo, 44100 Hz, 24 bit, "))
        << result.output;
    EXPECT_TRUE (result.output.endsWith (" times real time\n")) << result.output;
}

TEST_F (Console, QuietPrintsNothing)
{
    const auto result = RenderProcess::runWell ({ "--quiet", input.getFullPathName(), "-o", output.getFullPathName() });
    EXPECT_EQ (result.output, juce::String());
    EXPECT_TRUE (output.existsAsFile());
}

TEST_F (Console, ProgressAppearsOnATerminalAndNotWithQuiet)
{
    RenderProcess::Options options;
    options.stderrIsTerminal = true;
    juce::StringArray arguments { input.getFullPathName(), "-o", output.getFullPathName() };

    EXPECT_TRUE (RenderProcess::run (arguments, options).errors.contains ("rendering: "));

    arguments.add ("--quiet");
    EXPECT_EQ (RenderProcess::run (arguments, options).errors, juce::String());
}

TEST_F (Console, ClippingIsReportedWithThePeak)
{
    // 100 samples of 2.0 in each of two channels: 6.02 dB above full scale.
    auto loud = noise;

    for (auto channel = 0; channel < 2; ++channel)
        juce::FloatVectorOperations::fill (loud.getWritePointer (channel, 1000), 2.0f, 100);

    AudioFile::writeWav (input, loud, sampleRate);
    juce::StringArray arguments { "--set", "Mix=0", input.getFullPathName(), "-o", output.getFullPathName() };

    const auto clipped = RenderProcess::runWell (arguments).output;
    EXPECT_TRUE (clipped.contains ("\n200 samples above full scale were clipped, peak +6.0 dBFS;")) << clipped;
    EXPECT_TRUE (clipped.contains ("--bits 32f")) << clipped;

    arguments.addArray ({ "--bits", "32f" });
    EXPECT_FALSE (RenderProcess::runWell (arguments).output.contains ("clipped"));
    EXPECT_EQ (AudioFile::read (output).samples.getMagnitude (0, inputLength), 2.0f);
}

TEST_F (Console, HelpAndVersionNeedNothingElse)
{
    RenderProcess::Options options;
    options.useBuiltBundle = false;

    EXPECT_TRUE (RenderProcess::runWell ({ "--help" }, options).output.contains ("varlo-render INPUT -o OUTPUT"));
    EXPECT_EQ (RenderProcess::runWell ({ "--version" }, options).output, "varlo-render 1.0.0\n");
}

TEST_F (Console, ListShowsTheParametersInHostOrder)
{
    EXPECT_EQ (RenderProcess::runWell ({ "--list" }).output, "Name       Range                 Default\n"
                                                             "Mix        0 % to 100 %          50 %\n"
                                                             "Degrade    0 % to 100 %          0 %\n"
                                                             "Delay      1.0 ms to 10000.0 ms  1000.0 ms\n"
                                                             "Feedback   0 % to 100 %          50 %\n"
                                                             "Lowpass    20 Hz to 20000 Hz     5000 Hz\n"
                                                             "Resonance  0 % to 100 %          0 %\n"
                                                             "Bypass     Off, On               Off\n");
}

TEST_F (Console, ListForProgramsSaysTheSame)
{
    const auto list = juce::JSON::parse (RenderProcess::runWell ({ "--list", "--json" }).output);
    ASSERT_EQ (list.size(), 7);

    const auto& delay = list[2];
    EXPECT_EQ (delay["name"].toString(), "Delay");
    EXPECT_EQ ((double) delay["minimum"], 1.0);
    EXPECT_EQ ((double) delay["maximum"], 10000.0);
    EXPECT_EQ ((double) delay["default"], 1000.0);
    EXPECT_EQ (delay["unit"].toString(), "ms");

    const auto& bypass = list[6];
    EXPECT_EQ (bypass["name"].toString(), "Bypass");
    EXPECT_EQ (bypass["choices"][1].toString(), "On");
    EXPECT_EQ (bypass["default"].toString(), "Off");
}

/** Each option with its two dashes, out of a text in which others stand too. */
juce::StringArray findOptions (const juce::String& text)
{
    juce::StringArray options;
    const auto all = text.toStdString();
    const std::regex option ("--[a-z][a-z-]*[a-z]");

    for (std::sregex_iterator match (all.begin(), all.end(), option), end; match != end; ++match)
        options.addIfNotAlreadyThere (juce::String (match->str()));

    options.sort (false);
    return options;
}

TEST_F (Console, ManualAndCompletionKnowTheOptionsOfTheHelp)
{
    const auto options = findOptions (RenderProcess::runWell ({ "--help" }).output);
    ASSERT_GT (options.size(), 15);

    const auto packaging = juce::File (VARLO_TEST_FOLDER).getSiblingFile ("packaging/linux");
    const auto manual = packaging.getChildFile ("man/varlo-render.1").loadFileAsString().removeCharacters ("\\");
    EXPECT_EQ (findOptions (manual), options);
    EXPECT_EQ (findOptions (packaging.getChildFile ("varlo-render.bash").loadFileAsString()), options);
}

TEST_F (Console, ListRendersNothing)
{
    const auto table = RenderProcess::runWell ({ "--list" }).output;
    const auto result = RenderProcess::runWell ({ "--list", input.getFullPathName(), "-o", output.getFullPathName() });
    EXPECT_EQ (result.output, table);
    EXPECT_FALSE (output.exists());
}

TEST_F (Console, NeedsNeitherADisplayNorAWritableHome)
{
    RenderProcess::Options options;
    options.environment = { { "DISPLAY", std::nullopt }, { "HOME", "/dev/null/x" } };

    const auto expected = RenderProcess::runWell ({ "--list" }).output;
    EXPECT_EQ (RenderProcess::runWell ({ "--list" }, options).output, expected);
    RenderProcess::runWell ({ input.getFullPathName(), "-o", output.getFullPathName() }, options);
}

TEST_F (Console, LeavesInTheHomeWhatThePluginKeepsThere)
{
    const ScratchFolder home;
    RenderProcess::Options options;

    for (const auto* variable : { "XDG_CACHE_HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME" })
        options.environment[variable] = std::nullopt;

    options.environment["HOME"] = home.getFolder().getFullPathName().toStdString();
    RenderProcess::runWell ({ "--list" }, options);
    RenderProcess::runWell ({ input.getFullPathName(), "-o", output.getFullPathName() }, options);

    // JUCE asks the desktop for its scale with a program that may leave a cache of its own.
    home.getFile (".cache/dconf").deleteRecursively();
    home.getFile (".cache").deleteFile();

    EXPECT_EQ (home.getContents().joinIntoString (" "),
               ".local .local/share .local/share/Corvane .local/share/Corvane/Varlo .local/share/Corvane/Varlo/presets "
               "Corvane Corvane/Varlo Corvane/Varlo/Varlo.settings");
}

TEST_F (Console, AFullStdoutIsAnError)
{
    RenderProcess::Options options;
    options.stdoutPath = "/dev/full";
    const auto lost = "varlo-render: can't write to the standard output\n";

    for (const auto& arguments :
         { juce::StringArray { "--list" }, juce::StringArray { "--help" }, juce::StringArray { "--version" } })
    {
        const auto result = RenderProcess::run (arguments, options);
        EXPECT_EQ (result.exitCode, 1) << arguments[0];
        EXPECT_EQ (result.errors, lost);
    }

    juce::StringArray arguments { input.getFullPathName(), "-o", output.getFullPathName() };
    EXPECT_EQ (RenderProcess::run (arguments, options).exitCode, 1);
    EXPECT_EQ (AudioFile::read (output).samples.getNumChannels(), 2);

    arguments.add ("--quiet");
    RenderProcess::runWell (arguments, options);
}

TEST_F (Console, AClosedStdoutEndsUpInNoFile)
{
    RenderProcess::Options options;
    options.stdoutPath = juce::String();
    const auto expected = renderWell ({});

    const auto result = RenderProcess::run ({ input.getFullPathName(), "-o", output.getFullPathName() }, options);
    EXPECT_EQ (result.exitCode, 1);
    EXPECT_EQ (result.errors, "varlo-render: can't write to the standard output\n");
    EXPECT_TRUE (cv::test::areIdentical (AudioFile::read (output).samples, expected.samples));
}

TEST_F (Console, FindsTheBundleInTheHome)
{
    const ScratchFolder home;
    ASSERT_TRUE (juce::File (VARLO_BUNDLE).copyDirectoryTo (home.getFile (".vst3/Varlo.vst3")));

    RenderProcess::Options options;
    options.useBuiltBundle = false;
    options.environment["HOME"] = home.getFolder().getFullPathName().toStdString();
    EXPECT_TRUE (RenderProcess::runWell ({ "--list" }, options).output.contains ("Delay"));
}
} // namespace
} // namespace cv::render
