#include "pluginCore/state/Utf8.h"

namespace cv::pluginCore
{
namespace
{
constexpr juce::uint32 continuationMask = 0xc0;
constexpr juce::uint32 continuationMark = 0x80;
constexpr int continuationBits = 6;

/** What the first byte of a sequence says: how many bytes follow, the bits that it holds itself, and the
    smallest character that needs so many bytes.
*/
struct SequenceStart
{
    size_t numFollowing;
    juce::uint32 bits;
    juce::uint32 smallest;
};

std::optional<SequenceStart> readSequenceStart (juce::uint32 byte) noexcept
{
    if (byte < 0x80)
        return SequenceStart { 0, byte, 0 };

    if ((byte & 0xe0) == 0xc0)
        return SequenceStart { 1, byte & 0x1f, 0x80 };

    if ((byte & 0xf0) == 0xe0)
        return SequenceStart { 2, byte & 0x0f, 0x800 };

    if ((byte & 0xf8) == 0xf0)
        return SequenceStart { 3, byte & 0x07, 0x10000 };

    return {};
}
} // namespace

bool isWellFormedUtf8 (const char* bytes, size_t numBytes) noexcept
{
    for (size_t i = 0; i < numBytes;)
    {
        const auto start = readSequenceStart ((juce::uint8) bytes[i++]);

        if (! start.has_value() || start->numFollowing > numBytes - i)
            return false;

        auto character = start->bits;

        for (size_t n = 0; n < start->numFollowing; ++n)
        {
            const auto byte = (juce::uint32) (juce::uint8) bytes[i++];

            if ((byte & continuationMask) != continuationMark)
                return false;

            character = (character << continuationBits) | (byte & ~continuationMask);
        }

        const auto isSurrogate = character >= 0xd800 && character <= 0xdfff;

        if (character < start->smallest || character > 0x10ffff || isSurrogate)
            return false;
    }

    return true;
}
} // namespace cv::pluginCore
