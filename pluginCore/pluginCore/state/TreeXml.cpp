#include "pluginCore/state/TreeXml.h"

#include <memory>
#include <vector>

namespace cv::pluginCore
{
namespace
{
const juce::String binaryPrefix = "base64:";

/** Whether a binary attribute, "<size in bytes>.<six bits per character>", holds as much as it states. */
bool isPlausibleBinary (const juce::String& value)
{
    const auto digits = value.upToFirstOccurrenceOf (".", false, false);
    const auto bitsPerCharacter = 6;
    const auto maxBytes = (juce::int64) value.length() * bitsPerCharacter / 8;

    return digits.isNotEmpty() && digits.containsOnly ("0123456789") && digits.getLargeIntValue() <= maxBytes;
}

void removeImplausibleAttributes (juce::XmlElement& xml)
{
    for (auto i = xml.getNumAttributes(); --i >= 0;)
    {
        const auto name = xml.getAttributeName (i);

        if (name.startsWith (binaryPrefix) && (name == binaryPrefix || ! isPlausibleBinary (xml.getAttributeValue (i))))
            xml.removeAttribute (name);
    }
}

/** JUCE's own removal walks to each text anew. Taking children from the front and putting them back there is
    one step each.
*/
void removeTexts (juce::XmlElement& xml)
{
    std::vector<std::unique_ptr<juce::XmlElement>> kept;

    while (auto* child = xml.getFirstChildElement())
    {
        xml.removeChildElement (child, false);
        std::unique_ptr<juce::XmlElement> owned (child);

        if (! owned->isTextElement())
            kept.push_back (std::move (owned));
    }

    for (auto child = kept.rbegin(); child != kept.rend(); ++child)
        xml.prependChildElement (child->release());
}

void removeWhatTreesCannotHold (juce::XmlElement& xml)
{
    removeTexts (xml);
    removeImplausibleAttributes (xml);

    for (auto* child : xml.getChildIterator())
        removeWhatTreesCannotHold (*child);
}
} // namespace

juce::ValueTree treeFromXml (const juce::XmlElement& xml)
{
    auto cleaned = xml;
    removeWhatTreesCannotHold (cleaned);
    return juce::ValueTree::fromXml (cleaned);
}
} // namespace cv::pluginCore
