#include "tools/render/RenderTestSupport.h"

#include <unistd.h>

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

/** Puts four bytes, the lowest first, into a file. */
void overwrite (const juce::File& file, int position, juce::uint32 value)
{
    juce::MemoryBlock data;
    ASSERT_TRUE (file.loadFileAsData (data));
    for (auto i = 0; i < 4; ++i)
        data[position + i] = (char) (value >> (8 * i));

    ASSERT_TRUE (file.replaceWithData (data.getData(), data.getSize()));
}

/** Where the size of a WAV file's samples stands. */
int findDataSize (const juce::File& file)
{
    juce::MemoryBlock data;
    file.loadFileAsData (data);
    const std::string text (data.begin(), data.getSize());
    return (int) text.find ("data") + 4;
}

TEST_F (FileFormat, ReadsAWavStreamWithoutSizesToItsEnd)
{
    struct Sizes
    {
        juce::uint32 file;
        juce::uint32 data;
    };

    constexpr juce::uint32 unknown = 0xffffffff;
    const auto position = findDataSize (input);
    const auto headerSize = (juce::uint32) position + 4 - 8;
    const auto dataSize = (juce::uint32) input.getSize() - (juce::uint32) position - 4;
    const auto expected = renderWell ({ "--tail", "0", "--bits", "32f" }).samples;

    for (const auto& sizes : { Sizes { unknown, unknown }, Sizes { 0, 0 }, Sizes { headerSize, 0 },
                               Sizes { 0, unknown }, Sizes { unknown, dataSize }, Sizes { 0, dataSize } })
    {
        overwrite (input, 4, sizes.file);
        overwrite (input, position, sizes.data);
        EXPECT_TRUE (areIdentical (renderWell ({ "--tail", "0", "--bits", "32f" }).samples, expected))
            << sizes.file << " " << sizes.data;
    }
}

TEST_F (FileFormat, AWavStreamThatEndsWithinAFrameLosesIt)
{
    const auto expected = renderWell ({ "--tail", "0", "--bits", "32f" }).samples;
    juce::MemoryBlock data;
    input.loadFileAsData (data);
    input.replaceWithData (data.getData(), data.getSize() - 1);
    overwrite (input, 4, 0xffffffff);
    overwrite (input, findDataSize (input), 0xffffffff);

    const auto samples = renderWell ({ "--tail", "0", "--bits", "32f" }).samples;
    EXPECT_EQ (samples.getNumSamples(), inputLength - 1);
    EXPECT_EQ (samples.getSample (1, inputLength - 2), expected.getSample (1, inputLength - 2));
}

TEST_F (FileFormat, AnEmptyWavFileWithAnotherChunkBehindIsNoStream)
{
    AudioFile::writeWav (input, cv::test::makeSilence (1, 0), sampleRate);
    juce::MemoryBlock data;
    input.loadFileAsData (data);
    data.append ("LIST\4\0\0\0INFO", 12);
    input.replaceWithData (data.getData(), data.getSize());
    overwrite (input, 4, (juce::uint32) data.getSize() - 8);
    expectRenderError ({}, "no audio in");
}

TEST_F (FileFormat, AWavStreamOfMoreThan4GiBIsRefused)
{
    overwrite (input, 4, 0xffffffff);
    overwrite (input, findDataSize (input), 0xffffffff);

    // A file with a hole takes no room on the disk.
    if (truncate (input.getFullPathName().toRawUTF8(), (off_t) 5 << 30) != 0)
        GTEST_SKIP() << "no such large files here";

    expectRenderError ({}, "more than 4 GiB of audio without a size");
}

TEST_F (FileFormat, NamesMayHoldBlanksAndLetters)
{
    const auto file = scratch.getFile (juce::String::fromUTF8 ("Écho à 3 €.wav"));
    RenderProcess::runWell ({ input.getFullPathName(), "-o", file.getFullPathName() });
    EXPECT_TRUE (file.existsAsFile());
}
} // namespace
} // namespace cv::render
