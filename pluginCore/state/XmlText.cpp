#include "state/XmlText.h"

#include "state/Utf8.h"

namespace cv::pluginCore
{
namespace
{
constexpr int maxDepth = 200;

/** Whether a "&#...;" at this position stands for a character, and so leaves a valid text behind. */
bool isValidCharacterReference (juce::String::CharPointerType position)
{
    constexpr auto maxDigits = 8;

    position += 2;
    const auto isHex = *position == 'x' || *position == 'X';

    if (isHex)
        ++position;

    juce::int64 code = 0;
    auto numDigits = 0;

    for (; *position != ';'; ++position)
    {
        const auto digit = juce::CharacterFunctions::getHexDigitValue (*position);

        if (digit < 0 || (! isHex && digit > 9) || ++numDigits > maxDigits)
            return false;

        code = code * (isHex ? 16 : 10) + digit;
    }

    const auto isSurrogate = code >= 0xd800 && code <= 0xdfff;
    return code > 0 && code <= 0x10ffff && ! isSurrogate;
}

bool hasOnlyValidCharacterReferences (const juce::String& text)
{
    auto position = text.getCharPointer();

    for (;;)
    {
        position = juce::CharacterFunctions::find (position, juce::CharPointer_ASCII ("&#"));

        if (position.isEmpty())
            return true;

        if (! isValidCharacterReference (position))
            return false;

        ++position;
    }
}

/** Walks once through an XML text, without recursion, and finds its outermost element. */
class XmlScanner
{
public:
    explicit XmlScanner (const juce::String& text) : position (text.getCharPointer()) {}

    /** The text from the outermost element on, empty if what stands there must not be parsed. */
    juce::String findDocumentElement()
    {
        while (skipTo ("<"))
        {
            const auto start = position;
            const auto isElement = position[1] != '?' && position[1] != '!';

            if (! skipMarkup())
                break;

            if (isElement)
                return depth >= 0 && skipContents() ? juce::String (start) : juce::String();
        }

        return {};
    }

private:
    /** From behind the outermost start tag to behind the end tag that closes it. */
    bool skipContents()
    {
        while (depth > 0)
            if (! skipTo ("<") || ! skipMarkup() || depth > maxDepth)
                return false;

        return true;
    }

    /** From a "<" to behind the ">" that ends it. */
    bool skipMarkup()
    {
        if (startsWith ("<!--"))
            return skipPast ("-->");

        if (startsWith ("<?"))
            return skipPast ("?>");

        if (startsWith ("<![CDATA["))
            return depth > 0 && skipPast ("]]>");

        if (startsWith ("</"))
        {
            --depth;
            return skipPast (">");
        }

        ++position;
        return skipName() && skipAttributes();
    }

    /** From behind an element's name to behind its start tag. */
    bool skipAttributes()
    {
        for (;;)
        {
            position.incrementToEndOfWhitespace();

            if (startsWith ("/>"))
                return skipPast ("/>");

            if (startsWith (">"))
            {
                ++depth;
                return skipPast (">");
            }

            if (! skipName() || ! skipValue())
                return false;
        }
    }

    /** From behind an attribute's name to behind its value. */
    bool skipValue()
    {
        position.incrementToEndOfWhitespace();

        if (*position != '=')
            return false;

        ++position;
        position.incrementToEndOfWhitespace();
        const auto quote = *position;

        if (quote != '"' && quote != '\'')
            return false;

        ++position;
        return skipPast (juce::String::charToString (quote));
    }

    bool skipName()
    {
        const auto start = position;

        while (! position.isEmpty() && ! position.isWhitespace()
               && juce::CharPointer_ASCII ("=</>'\"").indexOf (*position) < 0)
            ++position;

        return juce::XmlElement::isValidXmlName (juce::String (start, position));
    }

    bool skipPast (juce::StringRef end)
    {
        if (! skipTo (end))
            return false;

        position += (int) end.length();
        return true;
    }

    bool skipTo (juce::StringRef target)
    {
        position = juce::CharacterFunctions::find (position, target.text);
        return ! position.isEmpty();
    }

    bool startsWith (juce::StringRef prefix) const { return position.compareUpTo (prefix.text, prefix.length()) == 0; }

    juce::String::CharPointerType position;
    int depth = 0;
};
} // namespace

std::unique_ptr<juce::XmlElement> parseXmlText (const juce::String& text)
{
    if (! isWellFormedUtf8 (text.toRawUTF8(), text.getNumBytesAsUTF8()))
        return {};

    const auto element = XmlScanner (text).findDocumentElement();

    if (element.isEmpty() || ! hasOnlyValidCharacterReferences (element))
        return {};

    return juce::XmlDocument (element).getDocumentElement();
}

std::unique_ptr<juce::XmlElement> parseXmlFile (const juce::File& file)
{
    juce::MemoryBlock data;

    if (! file.loadFileAsData (data))
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

    const juce::TemporaryFile temporary (file);
    {
        juce::FileOutputStream stream (temporary.getFile());
        stream << text.getMemoryBlock();
    }

    const auto isComplete = temporary.getFile().getSize() == (juce::int64) text.getDataSize();
    return isComplete && temporary.overwriteTargetFileWithTemporary();
}

const juce::XmlElement* findChildElement (const juce::XmlElement& parent, juce::StringRef name)
{
    for (const auto* child : parent.getChildIterator())
        if (child->getTagName() == name)
            return child;

    return nullptr;
}
} // namespace cv::pluginCore
