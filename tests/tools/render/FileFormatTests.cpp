#include "tools/render/RenderTestSupport.h"

namespace cv::render
{
namespace
{
using cv::test::areIdentical;
using FileFormat = RenderTest;

/** The integers of so many bits nearest to the samples, as floats. */
juce::AudioBuffer<float> quantise (juce::AudioBuffer<float> buffer, int bits)
{
    const auto fullScale = std::ldexp (1.0f, bits - 1);

    for (auto channel = 0; channel < buffer.getNumChannels(); ++channel)
        for (auto i = 0; i < buffer.getNumSamples(); ++i)
            buffer.setSample (channel, i, std::round (buffer.getSample (channel, i) * fullScale) / fullScale);

    return buffer;
}

TEST_F (FileFormat, FloatingPointKeepsEverySample)
{
    const auto result = renderWell ({ "--set", "Mix=0", "--tail", "0", "--bits", "32f" });
    EXPECT_EQ (result.bits, 32);
    EXPECT_TRUE (result.isFloat);
    EXPECT_TRUE (areIdentical (result.samples, noise));
}

TEST_F (FileFormat, IntegersAreTheNearestOnes)
{
    for (const auto bits : { 16, 24 })
    {
        const auto result = renderWell ({ "--set", "Mix=0", "--tail", "0", "--bits", juce::String (bits) });
        EXPECT_EQ (result.bits, bits);
        EXPECT_FALSE (result.isFloat);
        EXPECT_TRUE (areIdentical (result.samples, quantise (noise, bits))) << bits;
    }
}

TEST_F (FileFormat, DefaultIs24Bit)
{
    EXPECT_EQ (renderWell ({}).bits, 24);
}

TEST_F (FileFormat, IntegersStopAtFullScale)
{
    auto loud = cv::test::makeSilence (1, 2);
    loud.setSample (0, 0, 3.0f);
    loud.setSample (0, 1, -3.0f);
    AudioFile::writeWav (input, loud, sampleRate);

    const auto result = renderWell ({ "--set", "Mix=0", "--tail", "0", "--bits", "16" });
    EXPECT_EQ (result.samples.getSample (0, 0), 32767.0f / 32768.0f);
    EXPECT_EQ (result.samples.getSample (0, 1), -1.0f);
}

TEST_F (FileFormat, ReadsWavAiffAndFlacByContent)
{
    juce::WavAudioFormat wav;
    juce::AiffAudioFormat aiff;
    juce::FlacAudioFormat flac;
    juce::AudioFormat* const formats[] { &wav, &aiff, &flac };

    // 24-bit values pass through each format unchanged, whatever the name says that it is.
    const auto samples = quantise (noise, 24);

    for (auto* format : formats)
    {
        for (const auto* name : { "in.wav", "in.aiff", "in.flac", "in" })
        {
            const auto file = scratch.getFile (name);
            AudioFile::write (*format, file, samples, sampleRate, 24);
            RenderProcess::runWell (
                { file.getFullPathName(), "-o", output.getFullPathName(), "--set", "Mix=0", "--tail", "0" });
            EXPECT_TRUE (areIdentical (AudioFile::read (output).samples, samples))
                << format->getFormatName() << " in " << name;
        }
    }
}

TEST_F (FileFormat, WritesWavAndFlacByExtension)
{
    const auto samples = quantise (noise, 24);

    for (const auto* name : { "out.wav", "out.WAV", "out.flac", "out.FLAC" })
    {
        const auto file = scratch.getFile (name);
        RenderProcess::runWell (
            { input.getFullPathName(), "-o", file.getFullPathName(), "--set", "Mix=0", "--tail", "0" });
        const auto result = AudioFile::read (file);

        EXPECT_EQ (result.format, file.hasFileExtension ("flac") ? "FLAC file" : "WAV file");
        EXPECT_EQ (result.bits, 24);
        EXPECT_EQ (result.sampleRate, sampleRate);
        EXPECT_TRUE (areIdentical (result.samples, samples)) << name;
    }
}

TEST_F (FileFormat, NamesMayHoldBlanksAndLetters)
{
    const auto file = scratch.getFile (juce::String::fromUTF8 ("Écho à 3 €.wav"));
    RenderProcess::runWell ({ input.getFullPathName(), "-o", file.getFullPathName() });
    EXPECT_TRUE (file.existsAsFile());
}
} // namespace
} // namespace cv::render
