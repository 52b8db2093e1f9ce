#include "pluginCore/state/XmlText.h"

#include "pluginCore/files/FileReplacement.h"
#include "pluginCore/state/Utf8.h"
#include "pluginCore/state/XmlGuard.h"

namespace cv::pluginCore
{
std::unique_ptr<juce::XmlElement> parseXmlText (const juce::String& text)
{
    if (! isWellFormedUtf8 (text.toRawUTF8(), text.getNumBytesAsUTF8()))
        return {};

    const auto readable = findReadableXml (text);
    return readable.isEmpty() ? nullptr : juce::XmlDocument (readable).getDocumentElement();
}

std::unique_ptr<juce::XmlElement> parseXmlFile (const juce::File& file)
{
    juce::MemoryBlock data;

    if (file.getSize() > xmlLimits::maxTextBytes || ! file.loadFileAsData (data) || data.getSize() < minXmlBytes)
        return {};

    const auto* const bytes = static_cast<const char*> (data.getData());
    const auto hasByteOrderMark = data.getSize() >= 2
                                  && (juce::CharPointer_UTF16::isByteOrderMarkBigEndian (bytes)
                                      || juce::CharPointer_UTF16::isByteOrderMarkLittleEndian (bytes));

    if (! hasByteOrderMark && ! isWellFormedUtf8 (bytes, data.getSize()))
        return {};

    return parseXmlText (juce::String::createStringFromData (bytes, (int) data.getSize()));
}

bool writeXmlFile (const juce::XmlElement& xml, const juce::File& file)
{
    juce::MemoryOutputStream text;
    xml.writeTo (text, {});

    return replaceFile (file, text.getData(), text.getDataSize());
}

const juce::XmlElement* findChildElement (const juce::XmlElement& parent, juce::StringRef name)
{
    for (const auto* child : parent.getChildIterator())
        if (child->getTagName() == name)
            return child;

    return nullptr;
}
} // namespace cv::pluginCore
