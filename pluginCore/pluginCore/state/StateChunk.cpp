#include "pluginCore/state/StateChunk.h"

#include "pluginCore/state/Utf8.h"
#include "pluginCore/state/XmlGuard.h"
#include "pluginCore/state/XmlText.h"

namespace cv::pluginCore
{
namespace
{
constexpr juce::uint32 magic = 0x21324356;
constexpr int headerBytes = 8;
} // namespace

std::unique_ptr<juce::XmlElement> parseStateChunk (const void* data, int sizeInBytes)
{
    if (data == nullptr || sizeInBytes <= headerBytes)
        return {};

    const auto* const bytes = static_cast<const char*> (data);

    if (juce::ByteOrder::littleEndianInt (bytes) != magic)
        return {};

    const auto storedLength = (int) juce::ByteOrder::littleEndianInt (bytes + 4);
    const auto length = juce::jmin (sizeInBytes - headerBytes, storedLength);

    if (length < 1 || length > xmlLimits::maxTextBytes || ! isWellFormedUtf8 (bytes + headerBytes, (size_t) length))
        return {};

    return parseXmlText (juce::String::fromUTF8 (bytes + headerBytes, length));
}
} // namespace cv::pluginCore
