#include "tools/render/RenderTestSupport.h"

#include <juce_graphics/juce_graphics.h>

#include <set>

namespace cv::render
{
namespace
{
/** Renders a tenth of a second with the editor on the screen. */
class EditorPictureTest : public RenderTest
{
protected:
    void SetUp() override
    {
        if (juce::SystemStats::getEnvironmentVariable ("DISPLAY", {}).isEmpty())
            GTEST_SKIP() << "no display";
    }

    /** So that pictures differ in nothing but the values that they show. */
    void beSilent() const { AudioFile::writeWav (input, cv::test::makeSilence (2, inputLength), sampleRate); }

    juce::Image takePicture (juce::StringArray arguments) const
    {
        arguments.addArray ({ input.getFullPathName(), "--editor-png", picture.getFullPathName(), "--tail", "0" });
        text = RenderProcess::runWell (arguments, options).output;
        return juce::PNGImageFormat::loadFrom (picture);
    }

    static bool areEqual (const juce::Image& a, const juce::Image& b)
    {
        if (a.getBounds() != b.getBounds())
            return false;

        for (auto y = 0; y < a.getHeight(); ++y)
            for (auto x = 0; x < a.getWidth(); ++x)
                if (a.getPixelAt (x, y) != b.getPixelAt (x, y))
                    return false;

        return true;
    }

    RenderProcess::Options makeOptions() const
    {
        RenderProcess::Options result;
        result.environment["HOME"] = home.getFolder().getFullPathName().toStdString();
        return result;
    }

    const ScratchFolder home;
    const RenderProcess::Options options = makeOptions();
    const juce::File picture = scratch.getFile ("editor.png");
    mutable juce::String text;
};

TEST_F (EditorPictureTest, ShowsTheEditorAtItsOwnSize)
{
    const auto image = takePicture ({});
    EXPECT_EQ (image.getWidth(), 1050);
    EXPECT_EQ (image.getHeight(), 578);
    EXPECT_EQ (text, picture.getFullPathName() + ": the editor, 1050 x 578 pixels\n");

    // Neither one colour nor two: texts have soft edges.
    std::set<juce::uint32> colours;

    for (auto y = 0; y < image.getHeight(); ++y)
        for (auto x = 0; x < image.getWidth(); ++x)
            colours.insert (image.getPixelAt (x, y).getARGB());

    EXPECT_GT (colours.size(), 30u);
}

TEST_F (EditorPictureTest, TakesASizeAndThePluginKeepsItsProportions)
{
    auto image = takePicture ({ "--editor-size", "700x385" });
    EXPECT_EQ (image.getWidth(), 700);
    EXPECT_EQ (image.getHeight(), 385);

    image = takePicture ({ "--editor-size", "700x600" });
    EXPECT_NEAR ((double) image.getWidth() / image.getHeight(), 1.818, 0.01);
}

TEST_F (EditorPictureTest, ShowsTheValues)
{
    beSilent();
    const auto low = takePicture ({ "--set", "Lowpass=100" });
    const auto high = takePicture ({ "--set", "Lowpass=10000" });
    EXPECT_FALSE (areEqual (low, high));
}

TEST_F (EditorPictureTest, ShowsWhatAutomationHasLedTo)
{
    beSilent();
    const auto start = takePicture ({ "--set", "Mix=0" });
    const auto end = takePicture ({ "--automate", "Mix=0:0,0.05:100" });
    EXPECT_FALSE (areEqual (start, end));
}

TEST_F (EditorPictureTest, ShowsTheLastFiveSecondsOfTheSoundWithoutAGap)
{
    beSilent();
    const auto silent = takePicture ({});

    AudioFile::writeWav (input, cv::test::makeNoise (2, 6 * sampleRate, 0.5f), sampleRate);
    const auto loud = takePicture ({});
    ASSERT_EQ (loud.getBounds(), silent.getBounds());

    // Well within the spectrogram, each column of which is a moment.
    const juce::Rectangle<int> area (40, 90, 960, 300);

    for (auto x = area.getX(); x < area.getRight(); ++x)
    {
        auto numBright = 0;

        for (auto y = area.getY(); y < area.getBottom(); ++y)
            numBright += loud.getPixelAt (x, y).getBrightness() > silent.getPixelAt (x, y).getBrightness() + 0.1f;

        ASSERT_GT (numBright, area.getHeight() / 2) << x;
    }
}

TEST_F (EditorPictureTest, AudioIsWrittenAsWithoutIt)
{
    const juce::StringArray arguments {
        input.getFullPathName(), "-o", output.getFullPathName(), "--tail", "0.5", "--automate", "Delay=0:20,0.3:40"
    };
    RenderProcess::runWell (arguments, options);
    juce::MemoryBlock plain, seen;
    ASSERT_TRUE (output.loadFileAsData (plain));
    ASSERT_TRUE (output.deleteFile());

    auto withPicture = arguments;
    withPicture.addArray ({ "--editor-png", picture.getFullPathName() });
    const auto summary = RenderProcess::runWell (withPicture, options).output;
    ASSERT_TRUE (output.loadFileAsData (seen));
    EXPECT_EQ (seen, plain);
    EXPECT_TRUE (picture.existsAsFile());
    EXPECT_EQ (juce::StringArray::fromLines (summary.trim()).size(), 2) << summary;
}

TEST_F (EditorPictureTest, SoundIsPlayedAsFastAsItSounds)
{
    const auto start = juce::Time::getMillisecondCounterHiRes();
    RenderProcess::runWell ({ input.getFullPathName(), "--editor-png", picture.getFullPathName(), "--tail", "2" },
                            options);
    EXPECT_GE (juce::Time::getMillisecondCounterHiRes() - start, 2100.0);
}

TEST_F (EditorPictureTest, ReplacesAnOldPictureAndLeavesNothingElse)
{
    ASSERT_TRUE (picture.replaceWithText ("old"));
    EXPECT_TRUE (takePicture ({ "--quiet" }).isValid());
    EXPECT_EQ (text, juce::String());
    EXPECT_EQ (scratch.getContents(), juce::StringArray ({ "editor.png", "input.wav" }));
}

TEST_F (EditorPictureTest, CheckDisplaySaysNothingWhereThereIsOne)
{
    EXPECT_EQ (RenderProcess::runWell ({ "--check-display" }, options).output, juce::String());
}

/** What is refused, with a display or without. */
class EditorPictureRefusal : public RenderTest
{
protected:
    juce::String runWithDisplay (const std::optional<std::string>& display, juce::StringArray arguments) const
    {
        RenderProcess::Options options;
        options.environment["DISPLAY"] = display;
        const auto result = RenderProcess::run (arguments, options);
        EXPECT_EQ (result.exitCode, 1);
        EXPECT_EQ (result.output, juce::String());
        EXPECT_EQ (scratch.getContents(), juce::StringArray ({ "input.wav" }));
        return result.errors;
    }

    const juce::File picture = scratch.getFile ("editor.png");
};

TEST_F (EditorPictureRefusal, SaysThatThereIsNoDisplay)
{
    const juce::StringArray arguments { input.getFullPathName(), "-o", output.getFullPathName(), "--editor-png",
                                        picture.getFullPathName() };
    EXPECT_EQ (runWithDisplay (std::nullopt, arguments), "varlo-render: no display: DISPLAY is not set\n");
    EXPECT_EQ (runWithDisplay (":4711", arguments), "varlo-render: no display: there is no X server at \":4711\"\n");
    EXPECT_EQ (runWithDisplay (std::nullopt, { "--check-display" }), "varlo-render: no display: DISPLAY is not set\n");
}

TEST_F (EditorPictureRefusal, SaysWhatIsWrongWithTheCommandLine)
{
    const auto expectUsageError = [&] (juce::StringArray options, const juce::String& words)
    {
        options.add (input.getFullPathName());
        expectError (options, words, 2);
    };

    for (const auto* size : { "700", "700x", "x400", "0x400", "700x-1", "700x400x2", "10001x400", "a x b" })
        expectUsageError ({ "--editor-png", "e.png", "--editor-size", size },
                          juce::String ("--editor-size takes WIDTHxHEIGHT in pixels, each from 1 to 10000, not \"")
                              + size + "\"");

    expectUsageError ({ "-o", "o.wav", "--editor-size", "700x385" }, "--editor-size is for --editor-png");
    expectUsageError ({ "--editor-png", "e.jpg" }, "the picture's name must end in .png, not \".jpg\"");
    expectUsageError ({ "--editor-png", "e.png", "--block", "4097" }, "plays in blocks of at most 4096 samples");
}

TEST_F (EditorPictureRefusal, SaysThatThePictureCannotBePutThere)
{
    const auto missing = scratch.getFile ("none/editor.png").getFullPathName();
    expectError ({ input.getFullPathName(), "--editor-png", missing }, "no such folder: ");
}
} // namespace
} // namespace cv::render
