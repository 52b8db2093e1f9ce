#pragma once

#include "support/AudioFile.h"
#include "support/RenderProcess.h"
#include "support/Signals.h"

#include <gmock/gmock.h>

namespace cv::render
{
using cv::test::AudioFile;
using cv::test::RenderProcess;
using cv::test::ScratchFolder;

/** A scratch folder with a short stereo noise file in it, and a name for an output beside it. */
class RenderTest : public ::testing::Test
{
protected:
    RenderTest() { AudioFile::writeWav (input, noise, sampleRate); }

    /** Renders `input` to `output` with these further arguments and gives the output. */
    AudioFile renderWell (juce::StringArray arguments) const
    {
        arguments.addArray ({ input.getFullPathName(), "-o", output.getFullPathName() });
        RenderProcess::runWell (arguments);
        return AudioFile::read (output);
    }

    /** Expects one line that begins with the program's name and holds `words`, the exit code, and
        nothing in the scratch folder but what was there.
    */
    void expectError (const juce::StringArray& arguments, const juce::String& words, int exitCode = 1) const
    {
        const auto before = scratch.getContents();
        const auto result = RenderProcess::run (arguments);

        EXPECT_EQ (result.exitCode, exitCode) << arguments.joinIntoString (" ");
        EXPECT_EQ (result.output, juce::String());
        EXPECT_TRUE (result.errors.startsWith ("varlo-render: ")) << result.errors;
        EXPECT_EQ (result.errors.indexOfChar ('\n'), result.errors.length() - 1) << result.errors;
        EXPECT_TRUE (result.errors.contains (words)) << result.errors;
        EXPECT_EQ (scratch.getContents(), before);
    }

    /** The same for a render of `input` to `output` with these further arguments. */
    void expectRenderError (juce::StringArray arguments, const juce::String& words, int exitCode = 1) const
    {
        arguments.addArray ({ input.getFullPathName(), "-o", output.getFullPathName() });
        expectError (arguments, words, exitCode);
    }

    /** Waits until a render has begun: until its temporary file, with whose making its signal handlers are in place,
        lies beside what was there before. Fails the test after 30 seconds.
    */
    void waitForRender (const juce::StringArray& contentsBefore) const
    {
        constexpr auto limitMilliseconds = 30000.0;
        const auto start = juce::Time::getMillisecondCounterHiRes();

        while (scratch.getContents() == contentsBefore
               && juce::Time::getMillisecondCounterHiRes() - start < limitMilliseconds)
            juce::Thread::sleep (1);

        EXPECT_NE (scratch.getContents(), contentsBefore) << "the render never began";
    }

    static constexpr int sampleRate = 44100;
    static constexpr int inputLength = 4410;

    const ScratchFolder scratch;
    const juce::AudioBuffer<float> noise = cv::test::makeNoise (2, inputLength, 0.5f);
    const juce::File input = scratch.getFile ("input.wav");
    const juce::File output = scratch.getFile ("output.wav");

    // An hour in blocks of one sample takes longer than any test waits.
    const juce::StringArray longRender {
        input.getFullPathName(), "-o", output.getFullPathName(), "--tail", "3600", "--block", "1"
    };
};
} // namespace cv::render
