#include "tools/render/RenderTestSupport.h"

#include <sys/stat.h>
#include <unistd.h>

namespace cv::render
{
namespace
{
using BadInput = RenderTest;

TEST_F (BadInput, MissingFileIsNamed)
{
    expectError ({ scratch.getFile ("nothing.wav").getFullPathName(), "-o", output.getFullPathName() },
                 "no such file: " + scratch.getFile ("nothing.wav").getFullPathName());
}

TEST_F (BadInput, FolderIsNoAudioFile)
{
    expectError ({ scratch.getFolder().getFullPathName(), "-o", output.getFullPathName() }, "is a folder");
}

TEST_F (BadInput, PipeIsNoAudioFileAndNoOutput)
{
    const auto pipe = scratch.getFile ("pipe.wav");
    ASSERT_EQ (mkfifo (pipe.getFullPathName().toRawUTF8(), 0600), 0);
    expectError ({ pipe.getFullPathName(), "-o", output.getFullPathName() }, "not a regular file");
    expectError ({ input.getFullPathName(), "-o", pipe.getFullPathName() }, "not a regular file");
}

TEST_F (BadInput, TextIsNoAudioFile)
{
    const auto text = scratch.getFile ("text.wav");
    text.replaceWithText ("This is no audio, whatever its name says.");
    expectError ({ text.getFullPathName(), "-o", output.getFullPathName() }, "not a WAV, AIFF or FLAC file");
}

TEST_F (BadInput, EmptyFileIsNoAudioFile)
{
    const auto empty = scratch.getFile ("empty.wav");
    empty.create();
    expectError ({ empty.getFullPathName(), "-o", output.getFullPathName() }, "not a WAV, AIFF or FLAC file");
}

TEST_F (BadInput, FileWithoutSamplesIsRefused)
{
    const auto silent = scratch.getFile ("none.wav");
    AudioFile::writeWav (silent, cv::test::makeSilence (1, 0), sampleRate);
    expectError ({ silent.getFullPathName(), "-o", output.getFullPathName() }, "no audio in");
}

TEST_F (BadInput, FileCutShortIsRefused)
{
    juce::WavAudioFormat wav;
    juce::AiffAudioFormat aiff;
    juce::FlacAudioFormat flac;
    juce::AudioFormat* const formats[] { &wav, &aiff, &flac };
    const auto whole = scratch.getFile ("whole");
    const auto cut = scratch.getFile ("cut");

    for (auto* format : formats)
    {
        AudioFile::write (*format, whole, cv::test::makeNoise (2, 20000, 0.5f), sampleRate, 24);
        juce::MemoryBlock data;
        whole.loadFileAsData (data);

        for (const auto missing : { (size_t) 100, data.getSize() / 2 })
        {
            cut.replaceWithData (data.getData(), data.getSize() - missing);
            expectError ({ cut.getFullPathName(), "-o", output.getFullPathName() }, "damaged or cut short");
            expectError ({ cut.getFullPathName(), "-o", output.getFullPathName(), "--rate", "48000" },
                         "damaged or cut short");
        }
    }
}

TEST_F (BadInput, MoreThanTwoChannelsAreRefused)
{
    const auto surround = scratch.getFile ("surround.wav");
    AudioFile::writeWav (surround, cv::test::makeSilence (6, 100), sampleRate);
    expectError ({ surround.getFullPathName(), "-o", output.getFullPathName() }, "has 6 channels");
}

TEST_F (BadInput, RateThatNobodyRendersAtIsRefused)
{
    const auto slow = scratch.getFile ("slow.wav");
    AudioFile::writeWav (slow, cv::test::makeSilence (1, 100), 4000);
    expectError ({ slow.getFullPathName(), "-o", output.getFullPathName() }, "4000 Hz");
}

TEST_F (BadInput, UnknownParameterIsAnsweredWithTheNamesThereAre)
{
    expectRenderError ({ "--set", "Wobble=3" },
                       "\"Wobble\"; there are Mix, Degrade, Delay, Feedback, Lowpass, Resonance, Bypass");
    expectRenderError ({ "--automate", "Wobble=0:3" }, "no parameter \"Wobble\"");
}

TEST_F (BadInput, ValueWithoutNumberIsRefused)
{
    for (const auto* value : { "Delay=", "Delay=long", "Delay=ms", "Delay=inf", "Delay=nan", "Delay=1e999" })
        expectRenderError ({ "--set", value }, "Delay takes a number from 1.0 ms to 10000.0 ms");
}

TEST_F (BadInput, ValueOutsideTheRangeIsAnsweredWithTheRange)
{
    for (const auto* value : { "Delay=0.5", "Delay=10001", "Delay=-250 ms" })
        expectRenderError ({ "--set", value }, "Delay goes from 1.0 ms to 10000.0 ms");

    expectRenderError ({ "--automate", "Mix=0:50,1:101" }, "Mix goes from 0 % to 100 %");
}

TEST_F (BadInput, ForeignUnitIsRefused)
{
    for (const auto* value : { "Delay=2 s", "Delay=2,5", "Delay=250 ms x", "Delay=0x10" })
        expectRenderError ({ "--set", value }, "Delay is given in ms");
}

TEST_F (BadInput, SwitchTakesItsTextsOnly)
{
    expectRenderError ({ "--set", "Bypass=1" }, "Bypass is one of Off, On, not \"1\"");
}

TEST_F (BadInput, SettingWithoutNameOrEqualsSignIsRefused)
{
    expectRenderError ({ "--set", "Delay" }, "--set takes NAME=VALUE", 2);
    expectRenderError ({ "--set", "=3" }, "--set lacks the parameter's name", 2);
}

TEST_F (BadInput, AutomationNeedsTimesThatAscendFromZero)
{
    for (const auto* lane : { "Mix=", "Mix=50", "Mix=:50", "Mix=-1:50", "Mix=x:50", "Mix=0:50,", "Mix=inf:50" })
        expectRenderError ({ "--automate", lane }, "--automate Mix", 2);

    expectRenderError ({ "--automate", "Mix=1:50,0.5:60" }, "goes back in time", 2);
}

TEST_F (BadInput, ParameterIsSetOrAutomatedOnce)
{
    expectRenderError ({ "--set", "mix=50", "--automate", "Mix=0:50" }, "both set and automated", 2);
    expectRenderError ({ "--automate", "mix=0:50", "--automate", "Mix=0:50" }, "automated twice", 2);
}

TEST_F (BadInput, NumbersThatMakeNoSenseAreRefused)
{
    for (const auto* rate : { "0", "7999", "384001", "44100.5", "fast", "-44100" })
        expectRenderError ({ "--rate", rate }, "--rate takes a whole number from 8000 to 384000", 2);

    for (const auto* block : { "0", "65537", "-1", "12x", "99999999999" })
        expectRenderError ({ "--block", block }, "--block takes a whole number from 1 to 65536", 2);

    for (const auto* tail : { "-1", "3601", "nan", "5 s" })
        expectRenderError ({ "--tail", tail }, "--tail takes seconds from 0 to 3600", 2);

    for (const auto* bits : { "8", "32", "24f" })
        expectRenderError ({ "--bits", bits }, "--bits takes 16, 24 or 32f", 2);
}

TEST_F (BadInput, CommandLineMustNameOneInputAndOneOutput)
{
    expectError ({}, "no input file", 2);
    expectError ({ input.getFullPathName() }, "name one with -o", 2);
    expectRenderError ({ "second.wav" }, "several input files need -o with a folder", 2);
}

TEST_F (BadInput, OptionsThatAreUnknownOrLackTheirValueAreRefused)
{
    expectRenderError ({ "--wobble" }, "unknown option --wobble", 2);
    expectRenderError ({ "-x" }, "unknown option -x", 2);
    expectRenderError ({ "--mono=yes" }, "--mono takes no value", 2);
    expectError ({ input.getFullPathName(), "-o" }, "-o lacks its value", 2);
    expectError ({ input.getFullPathName(), "-o", "--quiet" }, "-o lacks its value", 2);
    expectError ({ input.getFullPathName(), "--tail=" }, "--tail lacks its value", 2);
}

TEST_F (BadInput, ArgumentThatIsNoTextIsRefused)
{
    RenderProcess::Options options;
    options.firstArgument = "5\x80 Echo for the long night.wav";
    const auto result = RenderProcess::run ({ "-o", output.getFullPathName() }, options);
    EXPECT_EQ (result.exitCode, 2);
    EXPECT_EQ (result.errors, "varlo-render: argument 1 is no UTF-8 text\n");
}

TEST_F (BadInput, OutputMustBeWavOrFlac)
{
    for (const auto* name : { "output", "output.mp3", "output.wav.bak" })
        expectError ({ input.getFullPathName(), "-o", scratch.getFile (name).getFullPathName() },
                     "must end in .wav or .flac", 2);

    expectError ({ input.getFullPathName(), "-o", scratch.getFile ("o.flac").getFullPathName(), "--bits", "32f" },
                 "FLAC", 2);
}

TEST_F (BadInput, FlacCannotHoldEveryRate)
{
    expectError ({ input.getFullPathName(), "-o", scratch.getFile ("o.flac").getFullPathName(), "--rate", "96001" },
                 "can't hold 96001 Hz");
}

TEST_F (BadInput, OutputFolderMustExist)
{
    expectError ({ input.getFullPathName(), "-o", scratch.getFile ("none/output.wav").getFullPathName() },
                 "no such folder");
    expectError ({ input.getFullPathName(), "-o", input.getChildFile ("output.wav").getFullPathName() },
                 "not a folder");
}

TEST_F (BadInput, OutputMayNotBeAFolder)
{
    scratch.getFile ("folder.wav").createDirectory();
    expectError ({ input.getFullPathName(), "-o", scratch.getFile ("folder.wav").getFullPathName() }, "is a folder");
}

TEST_F (BadInput, OutputNeedsPermission)
{
    if (geteuid() == 0)
        GTEST_SKIP() << "root may write everywhere";

    const auto locked = scratch.getFile ("locked");
    locked.createDirectory();
    locked.setReadOnly (true);
    expectError ({ input.getFullPathName(), "-o", locked.getChildFile ("output.wav").getFullPathName() },
                 "no permission");
    locked.setReadOnly (false);

    output.create();
    output.setReadOnly (true);
    expectRenderError ({}, "no permission");
}

TEST_F (BadInput, PluginMustBeAVst3BundleThatLoads)
{
    const auto missing = scratch.getFile ("None.vst3");
    expectRenderError ({ "--plugin", missing.getFullPathName() }, "no such plug-in: " + missing.getFullPathName());
    expectRenderError ({ "--plugin", input.getFullPathName() }, "not a VST3 bundle");

    const auto empty = scratch.getFile ("Empty.vst3");
    empty.createDirectory();
    expectRenderError ({ "--plugin", empty.getFullPathName() }, "can't be loaded");

    const auto broken = scratch.getFile ("Broken.vst3");
    juce::File (VARLO_BUNDLE).copyDirectoryTo (broken);

    for (const auto& library : broken.findChildFiles (juce::File::findFiles, true, "*.so"))
        library.replaceWithText ("no shared object");

    expectRenderError ({ "--plugin", broken.getFullPathName() }, "can't be loaded");
}

TEST_F (BadInput, WithoutAnyPluginThePlacesThatWereSearchedAreNamed)
{
    RenderProcess::Options options;
    options.useBuiltBundle = false;
    options.environment["HOME"] = scratch.getFolder().getFullPathName().toStdString();
    const juce::String inLibraries ("lib/vst3/Varlo.vst3");

    for (const auto* prefix : { "/usr", "/usr/local" })
        if (juce::File (prefix).getChildFile (inLibraries).exists())
            GTEST_SKIP() << "there is one in " << prefix;

    const auto result = RenderProcess::run ({ "--list" }, options);
    EXPECT_EQ (result.exitCode, 1);

    for (const auto& place :
         { scratch.getFile (".vst3/Varlo.vst3").getFullPathName(), "/usr/" + inLibraries, "/usr/local/" + inLibraries,
           juce::File (VARLO_RENDER).getParentDirectory().getSiblingFile (inLibraries).getFullPathName() })
        EXPECT_TRUE (result.errors.contains (place)) << place << " in " << result.errors;
}

TEST_F (BadInput, JsonIsForTheListAlone)
{
    expectRenderError ({ "--json" }, "--json is for --list", 2);
}
} // namespace
} // namespace cv::render
