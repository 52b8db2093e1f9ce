#include "WavSizes.h"

#include "RenderError.h"

#include <limits>

namespace cv::render
{
namespace
{
constexpr juce::uint32 unknownSize = 0xffffffff;
constexpr juce::int64 chunkHeaderBytes = 8;

// The form's name, "WAVE", counts towards the size in front of it.
constexpr juce::int64 firstChunkPosition = 12;

// A file that is made of nothing but tiny chunks would take as many reads. No program writes more than a few.
constexpr int maxChunks = 1000;

juce::uint32 readName (juce::InputStream& stream)
{
    return (juce::uint32) stream.readIntBigEndian();
}

constexpr juce::uint32 nameOf (const char (&text)[5])
{
    return (juce::uint32) (juce::uint8) text[0] << 24 | (juce::uint32) (juce::uint8) text[1] << 16
           | (juce::uint32) (juce::uint8) text[2] << 8 | (juce::uint32) (juce::uint8) text[3];
}

/** Where the header of the chunk with the samples stands; -1 if there is none. */
juce::int64 findData (juce::InputStream& stream)
{
    auto position = firstChunkPosition;

    for (auto i = 0; i < maxChunks && position + chunkHeaderBytes <= stream.getTotalLength(); ++i)
    {
        stream.setPosition (position);

        if (readName (stream) == nameOf ("data"))
            return position;

        const auto size = (juce::int64) (juce::uint32) stream.readInt();
        position += chunkHeaderBytes + size + (size & 1);
    }

    return -1;
}
} // namespace

std::vector<SizeCorrection> findWavSizeCorrections (juce::InputStream& stream)
{
    stream.setPosition (0);

    if (readName (stream) != nameOf ("RIFF"))
        return {};

    const auto fileSize = (juce::uint32) stream.readInt();

    if (readName (stream) != nameOf ("WAVE"))
        return {};

    const auto data = findData (stream);

    if (data < 0)
        return {};

    stream.setPosition (data + 4);
    const auto dataSize = (juce::uint32) stream.readInt();
    const auto dataStart = data + chunkHeaderBytes;
    const auto fileEnd = stream.getTotalLength();

    // A file without samples has a size too, and may have more behind them.
    const auto lacksFileSize = fileSize == unknownSize || fileSize + chunkHeaderBytes <= dataStart;
    const auto lacksDataSize = dataSize == unknownSize || (dataSize == 0 && lacksFileSize);

    if (! lacksFileSize && ! lacksDataSize)
        return {};

    if (fileEnd > std::numeric_limits<juce::uint32>::max())
        throw RenderError ("more than 4 GiB of audio without a size");

    std::vector<SizeCorrection> corrections { { 4, (juce::uint32) (fileEnd - chunkHeaderBytes) } };

    if (lacksDataSize)
        corrections.push_back ({ data + 4, (juce::uint32) (fileEnd - dataStart) });

    return corrections;
}
} // namespace cv::render
