#include "support/AudioFile.h"
#include "support/RenderProcess.h"
#include "support/Signals.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using test::AudioFile;
using test::RenderProcess;
using test::ScratchFolder;

constexpr auto sampleRate = 48000;

class BundleAutomation : public ::testing::Test
{
protected:
    std::vector<float> render (const std::vector<float>& samples, juce::StringArray arguments) const
    {
        const auto input = scratch.getFile ("input.wav");
        const auto output = scratch.getFile ("output.wav");
        juce::AudioBuffer<float> buffer (1, (int) samples.size());
        buffer.copyFrom (0, 0, samples.data(), buffer.getNumSamples());
        AudioFile::writeWav (input, buffer, sampleRate);

        arguments.addArray (
            { input.getFullPathName(), "-o", output.getFullPathName(), "--bits", "32f", "--tail", "1" });
        RenderProcess::runWell (arguments);

        const auto result = AudioFile::read (output).samples;
        return { result.getReadPointer (0), result.getReadPointer (0) + result.getNumSamples() };
    }

    /** Where the loudest sample lies from `start` to before `end`. */
    static size_t findPeak (const std::vector<float>& samples, size_t start, size_t end)
    {
        const auto louder = [] (float a, float b) { return std::abs (a) < std::abs (b); };
        const auto begin = samples.begin();
        return (size_t) (std::max_element (begin + (std::ptrdiff_t) start, begin + (std::ptrdiff_t) end, louder)
                         - begin);
    }

    const ScratchFolder scratch;
};

TEST_F (BundleAutomation, MixFollowsItsLine)
{
    // A steady 0.5 that echoes only after 10 s: all that is heard is the dry gain, 1 - Mix.
    const std::vector<float> steady (3 * sampleRate, 0.5f);
    const auto output = render (steady, { "--set", "Delay=10000", "--automate", "Mix=0.5:0,2.5:100" });

    // The line falls by 0.5 in 2 s; it is heard up to one block of 512 and one ramp of 5 ms late.
    constexpr auto fallPerSample = 0.5f / (2.0f * sampleRate);
    constexpr auto latest = (512.0f + 0.005f * sampleRate) * fallPerSample + 1.0e-5f;

    for (size_t i = 0; i < 3 * sampleRate; ++i)
    {
        const auto seconds = (float) i / sampleRate;
        const auto line = 0.5f * (1.0f - juce::jlimit (0.0f, 1.0f, (seconds - 0.5f) / 2.0f));
        ASSERT_GE (output[i], line - 1.0e-5f) << i;
        ASSERT_LE (output[i], line + latest) << i;
    }

    EXPECT_EQ (output[sampleRate / 4], 0.5f);
    EXPECT_EQ (output[3 * sampleRate - 1], 0.0f);
}

TEST_F (BundleAutomation, DelayJumpsFromOneTimeToAnother)
{
    // One impulse before the jump, one after the glide of half a second that follows it.
    constexpr size_t early = sampleRate / 2;
    constexpr size_t late = 3 * sampleRate;
    std::vector<float> impulses (4 * sampleRate, 0.0f);
    impulses[early] = 1.0f;
    impulses[late] = 1.0f;

    // A high cutoff keeps the echo's peak on its first sample.
    const auto output = render (impulses, { "--set", "Mix=100", "--set", "Feedback=0", "--set", "Lowpass=20000",
                                            "--automate", "Delay=0:100,1.5:100,1.5:250" });

    constexpr size_t hundredMilliseconds = sampleRate / 10;
    constexpr size_t quarterSecond = sampleRate / 4;
    const auto before = findPeak (output, 0, sampleRate);
    const auto after = findPeak (output, late, late + sampleRate);

    // The way there and back through the normalised value may cost one sample.
    EXPECT_NEAR ((double) before, (double) (early + hundredMilliseconds), 1.0);
    EXPECT_NEAR ((double) after, (double) (late + quarterSecond), 1.0);
}

TEST_F (BundleAutomation, BypassSwitchesWithoutAnInBetween)
{
    const std::vector<float> steady (2 * sampleRate, 0.5f);
    const auto output = render (steady, { "--set", "Mix=100", "--automate", "Bypass=0:Off,1:On" });

    // Off, nothing is heard of the input; a straight line between the two would switch half-way.
    const auto switchedAt = (size_t) std::distance (
        output.begin(), std::find_if (output.begin(), output.end(), [] (float sample) { return sample > 0.0f; }));
    EXPECT_GE (switchedAt, (size_t) sampleRate);
    EXPECT_LT (switchedAt, (size_t) sampleRate + 512);
}
} // namespace
} // namespace cv::varlo
