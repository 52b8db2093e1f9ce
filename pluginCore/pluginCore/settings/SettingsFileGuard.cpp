#include "pluginCore/settings/SettingsFileGuard.h"

#include "pluginCore/state/Utf8.h"
#include "pluginCore/state/XmlGuard.h"

#include <filesystem>

namespace cv::pluginCore
{
namespace
{
/** JUCE first reads so much of a file and stops behind its first start tag, then the whole. */
constexpr size_t bytesReadForTag = 8192;

/** Neither a folder, which has nothing to read, nor a pipe, which may have nothing to read for ever. */
bool isRegularFile (const juce::File& file)
{
    const auto* const path = reinterpret_cast<const char8_t*> (file.getFullPathName().toRawUTF8());
    std::error_code error;
    return std::filesystem::is_regular_file (std::filesystem::path (path), error);
}

bool isReadable (const char* bytes, size_t numBytes)
{
    if (numBytes < minXmlBytes || ! isWellFormedUtf8 (bytes, numBytes))
        return false;

    if (numBytes > bytesReadForTag
        && (! isWellFormedUtf8 (bytes, bytesReadForTag)
            || ! hasWholeStartTag (juce::String::createStringFromData (bytes, (int) bytesReadForTag))))
        return false;

    return findReadableXml (juce::String::createStringFromData (bytes, (int) numBytes)).isNotEmpty();
}
} // namespace

bool isReadableSettingsFile (const juce::File& file)
{
    if (! file.exists())
        return true;

    if (! isRegularFile (file) || file.getSize() > xmlLimits::maxTextBytes)
        return false;

    juce::FileInputStream stream (file);
    juce::MemoryBlock data;

    if (! stream.openedOk())
        return false;

    stream.readIntoMemoryBlock (data, xmlLimits::maxTextBytes);
    return isReadable (static_cast<const char*> (data.getData()), data.getSize());
}

void removeUnreadableValues (juce::PropertiesFile& file, juce::StringRef replacedValue)
{
    const juce::ScopedLock lock (file.getLock());
    auto& values = file.getAllProperties();

    for (auto i = values.size(); --i >= 0;)
    {
        const auto value = values.getAllValues()[i];

        if (values.getAllKeys()[i] != replacedValue && value.containsChar ('<') && findReadableXml (value).isEmpty())
            values.remove (i);
    }
}
} // namespace cv::pluginCore
