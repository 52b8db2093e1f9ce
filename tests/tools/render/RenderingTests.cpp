#include "tools/render/RenderTestSupport.h"

namespace cv::render
{
namespace
{
using cv::test::areIdentical;
using Rendering = RenderTest;

TEST_F (Rendering, OutputIsTheInputAndTheTail)
{
    EXPECT_EQ (renderWell ({}).samples.getNumSamples(), inputLength + 5 * sampleRate);
    EXPECT_EQ (renderWell ({ "--tail", "0" }).samples.getNumSamples(), inputLength);
    EXPECT_EQ (renderWell ({ "--tail", "0.25" }).samples.getNumSamples(), inputLength + sampleRate / 4);
}

TEST_F (Rendering, TailHoldsTheEchoes)
{
    const auto result = renderWell ({ "--set", "Delay=500", "--tail", "1" });
    EXPECT_GT (result.samples.getMagnitude (sampleRate / 2, inputLength), 0.01f);
}

TEST_F (Rendering, BlockLengthMakesNoDifferenceWhileParametersRest)
{
    const juce::StringArray settings { "--set",      "Delay=23", "--set",        "Feedback=90", "--set",
                                       "Degrade=40", "--set",    "Lowpass=3000", "--set",       "Resonance=60",
                                       "--tail",     "0.5",      "--bits",       "32f" };
    const auto withBlock = [&] (const char* length)
    {
        auto arguments = settings;
        arguments.addArray ({ "--block", length });
        return renderWell (arguments).samples;
    };

    const auto reference = withBlock ("1");
    EXPECT_GT (reference.getMagnitude (inputLength, inputLength), 0.01f);

    for (const auto* length : { "17", "64", "512", "1000", "65536" })
        EXPECT_TRUE (areIdentical (withBlock (length), reference)) << length;
}

TEST_F (Rendering, MonoStaysMonoAndStereoStaysStereo)
{
    EXPECT_EQ (renderWell ({}).samples.getNumChannels(), 2);

    AudioFile::writeWav (input, cv::test::makeNoise (1, inputLength, 0.5f), sampleRate);
    EXPECT_EQ (renderWell ({}).samples.getNumChannels(), 1);
    EXPECT_EQ (renderWell ({ "--mono" }).samples.getNumChannels(), 1);
}

TEST_F (Rendering, MonoIsTheMeanOfBothChannels)
{
    const auto result = renderWell ({ "--mono", "--set", "Mix=0", "--tail", "0", "--bits", "32f" }).samples;
    ASSERT_EQ (result.getNumChannels(), 1);
    ASSERT_EQ (result.getNumSamples(), inputLength);

    for (auto i = 0; i < inputLength; ++i)
        ASSERT_EQ (result.getSample (0, i), 0.5f * (noise.getSample (0, i) + noise.getSample (1, i))) << i;
}

TEST_F (Rendering, OtherRateKeepsPitchLengthAndPlace)
{
    constexpr auto frequencyHz = 1000.0;
    constexpr auto newRate = 48000;
    AudioFile::writeWav (input, cv::test::makeSine (2, sampleRate, frequencyHz / sampleRate), sampleRate);

    const auto result =
        renderWell ({ "--rate", juce::String (newRate), "--set", "Mix=0", "--tail", "0", "--bits", "32f" });
    const auto expected = cv::test::makeSine (2, newRate, frequencyHz / newRate);
    EXPECT_EQ (result.sampleRate, newRate);
    ASSERT_EQ (result.samples.getNumSamples(), newRate);

    // The converter is good for 97 dB, -97 dB being 1.4e-5; at its ends it sees silence beyond the sine.
    constexpr auto tolerance = 3.0e-5f;
    constexpr auto edge = newRate / 20;

    for (auto channel = 0; channel < 2; ++channel)
        for (auto i = edge; i < newRate - edge; ++i)
            ASSERT_NEAR (result.samples.getSample (channel, i), expected.getSample (channel, i), tolerance) << i;
}

TEST_F (Rendering, LowerRateDropsWhatItCannotHold)
{
    constexpr auto newRate = 22050;
    AudioFile::writeWav (input, cv::test::makeSine (1, sampleRate, 15000.0 / sampleRate), sampleRate);

    const auto result =
        renderWell ({ "--rate", juce::String (newRate), "--set", "Mix=0", "--tail", "0", "--bits", "32f" });
    ASSERT_EQ (result.samples.getNumSamples(), newRate);

    // Folded back, 15 kHz would be a full 7.05 kHz.
    EXPECT_LT (result.samples.getMagnitude (newRate / 20, newRate * 9 / 10), 1.0e-4f);
}

TEST_F (Rendering, InputMayBeLongerThanTheBlocksThatItIsReadIn)
{
    // The file and the rate converter work in pieces of their own; all of the input must come out.
    const auto longNoise = cv::test::makeNoise (2, 50001, 0.5f);
    AudioFile::writeWav (input, longNoise, sampleRate);

    for (const auto* length : { "4096", "5000", "60000" })
        EXPECT_TRUE (areIdentical (
            renderWell ({ "--block", length, "--set", "Mix=0", "--tail", "0", "--bits", "32f" }).samples, longNoise))
            << length;
}

TEST_F (Rendering, SeveralInputsGoIntoAFolder)
{
    const auto folder = scratch.getFile ("out");
    folder.createDirectory();
    const auto second = scratch.getFile ("second.aiff");
    juce::AiffAudioFormat aiff;
    AudioFile::write (aiff, second, cv::test::makeNoise (1, 1000, 0.25f), 48000, 24);

    const juce::StringArray settings { "--set", "Delay=20", "--tail", "0.5", "--bits", "32f" };
    juce::StringArray arguments { input.getFullPathName(), second.getFullPathName(), "-o", folder.getFullPathName() };
    arguments.addArray (settings);
    const auto result = RenderProcess::runWell (arguments);

    for (const auto& file : { input, second })
    {
        auto alone = settings;
        alone.addArray ({ file.getFullPathName(), "-o", output.getFullPathName() });
        RenderProcess::runWell (alone);
        const auto rendered = folder.getChildFile (file.getFileNameWithoutExtension() + ".wav");
        EXPECT_TRUE (result.output.contains (rendered.getFullPathName() + ": ")) << result.output;
        EXPECT_TRUE (rendered.hasIdenticalContentTo (output)) << rendered.getFullPathName();
    }
}

TEST_F (Rendering, AnInputThatFailsKeepsNoOtherFromItsTurn)
{
    const auto folder = scratch.getFile ("out");
    folder.createDirectory();
    const auto missing = scratch.getFile ("missing.wav");
    const auto result = RenderProcess::run (
        { missing.getFullPathName(), input.getFullPathName(), "-o", folder.getFullPathName(), "--quiet" });

    EXPECT_EQ (result.exitCode, 1);
    EXPECT_EQ (result.errors, "varlo-render: no such file: " + missing.getFullPathName() + "\n");
    EXPECT_TRUE (folder.getChildFile ("input.wav").existsAsFile());
    EXPECT_EQ (folder.getNumberOfChildFiles (juce::File::findFilesAndDirectories), 1);
}

TEST_F (Rendering, NoResultReplacesAnInputOrAnotherResult)
{
    const auto folder = scratch.getFolder().getFullPathName();
    expectError ({ input.getFullPathName(), "-o", folder }, "input.wav would replace an input", 2);

    const auto other = scratch.getFile ("other");
    other.createDirectory();
    const auto same = other.getChildFile ("input.aiff");
    input.copyFileTo (same);
    const auto out = scratch.getFile ("out");
    out.createDirectory();
    expectError ({ input.getFullPathName(), same.getFullPathName(), "-o", out.getFullPathName() },
                 "two inputs would become", 2);

    for (const auto* option : { "--save-state", "--editor-png" })
        expectError ({ input.getFullPathName(), "-o", out.getFullPathName(), option, "x.png" }, "is for one input", 2);
}
} // namespace
} // namespace cv::render
