#include "tools/render/RenderTestSupport.h"

namespace cv::render
{
namespace
{
using cv::test::areIdentical;
using Setting = RenderTest;

AudioFile withDelay (const juce::File& input, const juce::File& output, const juce::StringArray& arguments)
{
    juce::StringArray all { input.getFullPathName(), "-o", output.getFullPathName(), "--bits", "32f", "--tail", "1" };
    all.addArray (arguments);
    RenderProcess::runWell (all);
    return AudioFile::read (output);
}

TEST_F (Setting, AllWaysToTypeAValueMeanTheSame)
{
    const auto reference = withDelay (input, output, { "--set", "Delay=375" });
    ASSERT_FALSE (areIdentical (reference.samples, withDelay (input, output, {}).samples));

    for (const auto* form : { "delay=375", "DELAY=375.0", "Delay=375 ms", "Delay=375ms", "Delay=375 MS",
                              " Delay = 375 ", "Delay=+375", "Delay=3.75e2" })
        EXPECT_TRUE (areIdentical (reference.samples, withDelay (input, output, { "--set", form }).samples)) << form;

    EXPECT_TRUE (areIdentical (reference.samples, withDelay (input, output, { "--set=Delay=375" }).samples));
}

TEST_F (Setting, LastOneOfARepeatedNameCounts)
{
    const auto reference = withDelay (input, output, { "--set", "Delay=375" });
    const auto repeated = withDelay (input, output, { "--set", "Delay=20", "--set", "delay=375" });
    EXPECT_TRUE (areIdentical (reference.samples, repeated.samples));
}

TEST_F (Setting, HoldsFromTheFirstSampleWithoutAGlide)
{
    // Mix 0 is the input itself; a ramp from the default of 50 would show in the first 5 ms.
    const auto dry = withDelay (input, output, { "--set", "Mix=0", "--tail", "0" });
    EXPECT_TRUE (areIdentical (dry.samples, noise));
}

TEST_F (Setting, EndsOfTheRangeAreInside)
{
    for (const auto* value : { "Delay=1", "Delay=10000.0 ms", "Lowpass=20 Hz", "Lowpass=20000", "Mix=100%" })
        withDelay (input, output, { "--set", value });
}

TEST_F (Setting, SwitchTakesItsTextInAnyCase)
{
    const auto bypassed = withDelay (input, output, { "--set", "bypass=on", "--tail", "0" });
    EXPECT_TRUE (areIdentical (bypassed.samples, noise));

    const auto processed = withDelay (input, output, { "--set", "Bypass=Off", "--tail", "0" });
    EXPECT_FALSE (areIdentical (processed.samples, noise));
}

TEST_F (Setting, ValuesHaveEnglishNamesWhateverTheSystemSpeaks)
{
    juce::ChildProcess localedef;
    const auto locale = scratch.getFile ("fr_FR.UTF-8");

    if (! localedef.start ({ "localedef", "-i", "fr_FR", "-f", "UTF-8", locale.getFullPathName() })
        || ! localedef.waitForProcessToFinish (-1) || ! locale.isDirectory())
        GTEST_SKIP() << "no French locale can be made here";

    RenderProcess::Options options;
    options.environment["LOCPATH"] = scratch.getFolder().getFullPathName().toStdString();
    options.environment["LC_ALL"] = "fr_FR.UTF-8";
    const auto list = RenderProcess::runWell ({ "--list" }, options).output;
    EXPECT_TRUE (list.contains ("Bypass     Off, On               Off\n")) << list;
}

TEST_F (Setting, OneAutomationPointIsTheSameAsASetting)
{
    const auto reference = withDelay (input, output, { "--set", "Delay=375" });

    for (const auto* lane : { "Delay=0:375", "Delay=0.5:375 ms", "delay=0:375,0.5:375" })
        EXPECT_TRUE (areIdentical (reference.samples, withDelay (input, output, { "--automate", lane }).samples))
            << lane;
}
} // namespace
} // namespace cv::render
