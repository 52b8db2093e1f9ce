#include "pluginCore/sharing/SettingsFileGuard.h"

#include "pluginCore/files/FilePath.h"
#include "pluginCore/state/Utf8.h"
#include "pluginCore/state/XmlGuard.h"

namespace cv::pluginCore
{
namespace
{
/** JUCE first reads so much of a file and stops behind its first start tag, then the whole. */
constexpr size_t bytesReadForTag = 8192;

bool holdsElementBehindText (const juce::XmlElement& element)
{
    auto isBehindText = false;

    for (const auto* child : element.getChildIterator())
    {
        if ((isBehindText && ! child->isTextElement()) || holdsElementBehindText (*child))
            return true;

        isBehindText = child->isTextElement();
    }

    return false;
}

/** JUCE keeps a value's element as text on one line, for which it has no line ends. What lies in an element behind text
    begins on a new line all the same, which it reads through a null pointer.
*/
bool hasWritableValues (const juce::XmlElement& properties)
{
    for (const auto* value : properties.getChildIterator())
        if (const auto* content = value->getFirstChildElement();
            content != nullptr && holdsElementBehindText (*content))
            return false;

    return true;
}

bool isReadable (const char* bytes, size_t numBytes)
{
    if (numBytes < minXmlBytes || ! isWellFormedUtf8 (bytes, numBytes))
        return false;

    if (numBytes > bytesReadForTag
        && (! isWellFormedUtf8 (bytes, bytesReadForTag)
            || ! hasWholeStartTag (juce::String::createStringFromData (bytes, (int) bytesReadForTag))))
        return false;

    const auto text = findReadableXml (juce::String::createStringFromData (bytes, (int) numBytes));

    if (text.isEmpty())
        return false;

    const auto properties = juce::parseXML (text);
    return properties == nullptr || hasWritableValues (*properties);
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
