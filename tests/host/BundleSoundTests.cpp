#include "host/EchoModel.h"
#include "support/AudioFile.h"
#include "support/RenderProcess.h"
#include "support/Signals.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using test::areIdentical;
using test::AudioFile;
using test::makeNoise;
using test::makeSilence;
using test::RenderProcess;
using test::ScratchFolder;

constexpr auto outputRateHz = 44100;

/** The bundle as a host hears it: samples in, floating point samples out. */
class BundleSound : public ::testing::Test
{
protected:
    juce::AudioBuffer<float> render (const juce::AudioBuffer<float>& samples,
                                     double sampleRate,
                                     juce::StringArray arguments) const
    {
        const auto input = scratch.getFile ("input.wav");
        const auto output = scratch.getFile ("output.wav");
        AudioFile::writeWav (input, samples, sampleRate);
        arguments.addArray ({ input.getFullPathName(), "-o", output.getFullPathName(), "--bits", "32f" });
        RenderProcess::runWell (arguments);
        return AudioFile::read (output).samples;
    }

    juce::AudioBuffer<float> render (const juce::AudioBuffer<float>& samples, juce::StringArray arguments) const
    {
        return render (samples, outputRateHz, std::move (arguments));
    }

    static juce::AudioBuffer<float> makeImpulse (int numChannels, int channel, int position = 0)
    {
        auto buffer = makeSilence (numChannels, position + 1);
        buffer.setSample (channel, position, 1.0f);
        return buffer;
    }

    /** The first sample from `start` on that is not 0, -1 for none. */
    static int findSound (const juce::AudioBuffer<float>& buffer, int channel, int start)
    {
        for (auto i = start; i < buffer.getNumSamples(); ++i)
            if (! juce::exactlyEqual (buffer.getSample (channel, i), 0.0f))
                return i;

        return -1;
    }

    const ScratchFolder scratch;
};

TEST_F (BundleSound, ImpulseAtDefaultsEchoesEachSecond)
{
    const auto output = render (makeImpulse (2, 0), { "--tail", "2.5" });
    constexpr auto firstEcho = outputRateHz;

    // What is fed back comes out of the line's read, so it is written a sample later.
    constexpr auto secondEcho = 2 * outputRateHz + 1;

    EXPECT_EQ (output.getSample (0, 0), 0.5f);
    EXPECT_EQ (findSound (output, 0, 1), firstEcho);

    std::vector<double> impulse (1000, 0.0);
    impulse[0] = 1.0;

    const auto first = wetLowpass (impulse, 5000.0, outputRateHz);
    const auto second = wetLowpass (feedbackLadder (impulse, 5000.0, outputRateHz), 5000.0, outputRateHz);

    // The plug-in computes in single precision: seven digits of values below 0.03.
    constexpr auto tolerance = 1.0e-7;

    for (auto i = 0; i < 1000; ++i)
    {
        ASSERT_NEAR (output.getSample (0, firstEcho + i), 0.5 * first[(size_t) i], tolerance) << i;
        ASSERT_NEAR (output.getSample (0, secondEcho + i), 0.5 * 0.46 * second[(size_t) i], tolerance) << i;
    }

    // By then the first echo's own end has faded to next to nothing.
    EXPECT_LT (std::abs (output.getSample (0, secondEcho - 1)), 1.0e-30f);
    EXPECT_LT (output.getMagnitude (0, secondEcho, 1000), output.getMagnitude (0, firstEcho, 1000) * 0.46f);
}

TEST_F (BundleSound, MonoSoundsAsOneChannelOfStereo)
{
    const auto noise = makeNoise (2, 5000, 0.5f);
    auto left = makeSilence (1, noise.getNumSamples());
    left.copyFrom (0, 0, noise, 0, 0, noise.getNumSamples());
    const juce::StringArray settings { "--set", "Delay=30", "--set", "Degrade=30", "--tail", "0.3" };

    const auto stereo = render (noise, settings);
    const auto mono = render (left, settings);
    ASSERT_EQ (stereo.getNumChannels(), 2);
    ASSERT_EQ (mono.getNumChannels(), 1);

    for (auto i = 0; i < stereo.getNumSamples(); ++i)
        ASSERT_EQ (mono.getSample (0, i), stereo.getSample (0, i)) << i;
}

TEST_F (BundleSound, ChannelsDoNotMix)
{
    for (const auto channel : { 0, 1 })
    {
        const auto output = render (makeImpulse (2, channel), { "--tail", "2.5" });
        EXPECT_GT (output.getMagnitude (channel, 1, output.getNumSamples() - 1), 0.0f);
        EXPECT_EQ (findSound (output, 1 - channel, 0), -1);
    }
}

TEST_F (BundleSound, DelayIsTheSameTimeAtEachRate)
{
    struct Case
    {
        int rateHz;
        int samplesOfOneMillisecond;
    };

    for (const auto& [rateHz, samplesOfOneMillisecond] :
         { Case { 22050, 22 }, Case { 44100, 44 }, Case { 48000, 48 }, Case { 96000, 96 }, Case { 192000, 192 } })
    {
        const auto longest = render (makeImpulse (2, 1), rateHz, { "--tail", "1.5", "--set", "Feedback=0" });
        EXPECT_EQ (findSound (longest, 1, 1), rateHz);

        const auto shortest =
            render (makeImpulse (2, 1), rateHz, { "--tail", "0.1", "--set", "Delay=1", "--set", "Feedback=0" });
        EXPECT_EQ (findSound (shortest, 1, 1), samplesOfOneMillisecond);
    }
}

TEST_F (BundleSound, RateOfTheRenderIsTheOneThePluginHears)
{
    // At 48 kHz a file of 44.1 kHz still echoes after one second.
    const auto output = render (makeNoise (1, 4410, 0.5f),
                                { "--rate", "48000", "--tail", "2", "--set", "Feedback=0", "--set", "Mix=100" });
    EXPECT_EQ (output.getNumSamples(), 4800 + 2 * 48000);

    // The converter's filter begins a little before the first sample, but nothing comes before the input.
    EXPECT_EQ (findSound (output, 0, 0), 48000);
}

TEST_F (BundleSound, BypassPassesTheInputOn)
{
    const auto noise = makeNoise (2, 5000, 0.5f);
    const auto output = render (noise, { "--set", "Bypass=On", "--set", "Delay=20", "--tail", "1" });
    juce::AudioBuffer<float> expected (2, 5000 + outputRateHz);
    expected.clear();

    for (auto channel = 0; channel < 2; ++channel)
        expected.copyFrom (channel, 0, noise, channel, 0, noise.getNumSamples());

    EXPECT_TRUE (areIdentical (output, expected));
}

TEST_F (BundleSound, SilenceStaysSilence)
{
    for (const auto numChannels : { 1, 2 })
    {
        const auto output = render (makeSilence (numChannels, 1000),
                                    { "--set", "Feedback=100", "--set", "Degrade=100", "--set", "Resonance=100" });
        EXPECT_EQ (output.getMagnitude (0, output.getNumSamples()), 0.0f);
    }
}

TEST_F (BundleSound, MixZeroIsTheInputAndMixFullHasNoneOfIt)
{
    const auto noise = makeNoise (2, 5000, 0.5f);
    EXPECT_TRUE (areIdentical (render (noise, { "--set", "Mix=0", "--tail", "0" }), noise));

    // The first echo comes after a second, long after the input's end.
    const auto wet = render (noise, { "--set", "Mix=100", "--tail", "1.2" });
    EXPECT_EQ (findSound (wet, 0, 0), outputRateHz);
}
} // namespace
} // namespace cv::varlo
