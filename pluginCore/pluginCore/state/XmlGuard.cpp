#include "pluginCore/state/XmlGuard.h"

#include <optional>
#include <string_view>
#include <unordered_set>

namespace cv::pluginCore
{
namespace
{
using Characters = juce::String::CharPointerType;
using juce::CharPointer_ASCII;

/** The reader's idea of what a name is made of; which of them XML allows is a second question. */
bool isNameCharacter (juce::juce_wchar character) noexcept
{
    return juce::CharacterFunctions::isLetterOrDigit (character) || character == '_' || character == '-'
           || character == ':' || character == '.';
}

class XmlScanner
{
public:
    explicit XmlScanner (const juce::String& text) : position (text.getCharPointer()) {}

    juce::String findDocumentElement()
    {
        const auto start = skipToDocumentElement();

        if (! start.has_value() || readStartTag() == Tag::bad)
            return {};

        while (depth > 0)
            if (! readContent())
                return {};

        return { *start, position };
    }

    bool hasWholeStartTag() { return skipToDocumentElement().has_value() && readStartTag() == Tag::ended; }

private:
    /** How an element's start tag ended. */
    enum class Tag
    {
        bad,
        ended,
        cutOff // the reader takes what there is of it for an element
    };

    std::optional<Characters> skipToDocumentElement()
    {
        // A document type stands at the start or nowhere: elsewhere the reader takes it for a broken element.
        skipBlanks();

        if (isAtEnd || *position != '<' || startsWith ("<!DOCTYPE"))
            return {};

        return position;
    }

    /** One piece of an open element's content: a text, an element's start or the end of the open one. */
    bool readContent()
    {
        hasSkippedInstruction = false;
        skipBlanks();

        if (isAtEnd)
            return false;

        if (*position != '<')
            return ! hasSkippedInstruction && readText();

        if (startsWith ("</"))
            return readEndTag();

        if (startsWith ("<![CDATA["))
            return skipPast ("]]>", 9);

        return readStartTag() != Tag::bad;
    }

    /** Where the ">" is missing, the reader takes all open elements for ended. */
    bool readEndTag()
    {
        --depth;

        if (! skipPast (">", 2))
            depth = 0;

        return true;
    }

    bool readText()
    {
        while (*position != '<' || startsWith ("<!--"))
        {
            if (*position == '<')
            {
                if (! skipPast ("-->", 4))
                    return false;
            }
            else if (*position == '&')
            {
                if (! skipReference())
                    return false;
            }
            else if (position.isEmpty())
                return false;
            else
                ++position;
        }

        return true;
    }

    Tag readStartTag()
    {
        ++position;

        if (! isNameCharacter (*position))
            skipBlanks();

        if (! skipName() || ++numElements > xmlLimits::maxElements)
            return Tag::bad;

        return readAttributes();
    }

    Tag readAttributes()
    {
        for (auto numAttributes = 0; numAttributes <= xmlLimits::maxAttributesOfElement; ++numAttributes)
        {
            skipBlanks();

            if (startsWith ("/>"))
            {
                position += 2;
                return Tag::ended;
            }

            if (*position == '>')
            {
                ++position;
                return ++depth <= xmlLimits::maxDepth ? Tag::ended : Tag::bad;
            }

            if (isAtEnd && ! isNameCharacter (*position))
                return Tag::cutOff;

            if (! skipName())
                return Tag::bad;

            skipBlanks();

            if (*position != '=')
                return Tag::bad;

            ++position;
            skipBlanks();

            if (*position != '"' && *position != '\'')
                return Tag::cutOff;

            if (! skipValue())
                return Tag::bad;
        }

        return Tag::bad;
    }

    bool skipName()
    {
        const auto start = position;

        while (isNameCharacter (*position))
            ++position;

        const auto length = (size_t) (position.getAddress() - start.getAddress());
        const auto isNew = names.insert (std::string_view (start.getAddress(), length)).second;

        return ! isNew
               || (names.size() <= (size_t) xmlLimits::maxNames
                   && juce::XmlElement::isValidXmlName (juce::String (start, position)));
    }

    bool skipValue()
    {
        const auto quote = position.getAndAdvance();

        if (isAtEnd)
            return true;

        while (*position != quote)
        {
            if (position.isEmpty())
                return false;

            if (*position != '&')
                ++position;
            else if (! skipReference())
                return false;
        }

        ++position;
        return true;
    }

    bool skipReference()
    {
        ++position;

        if (*position != '#')
            return skipEntity();

        ++position;

        if (*position == 'x' || *position == 'X')
        {
            ++position;
            return skipDigits (8, [] (auto c) { return juce::CharacterFunctions::getHexDigitValue (c) >= 0; });
        }

        const auto isNumber = *position >= '0' && *position <= '9';
        return ! isNumber || skipDigits (12, [] (auto) { return true; });
    }

    /** To behind the ";", or behind the first that is no digit or one too many: there the reader goes on. */
    template <typename IsDigit>
    bool skipDigits (int maxDigits, IsDigit&& isDigit)
    {
        for (auto numDigits = 1; *position != ';' && isDigit (*position) && numDigits <= maxDigits; ++numDigits)
        {
            if (position.isEmpty())
                return false;

            ++position;
        }

        if (position.isEmpty())
            return false;

        ++position;
        return true;
    }

    bool skipEntity()
    {
        for (const auto* known : { "amp;", "quot;", "apos;", "lt;", "gt;" })
        {
            const CharPointer_ASCII name (known);

            if (position.compareIgnoreCaseUpTo (name, (int) name.length()) == 0)
            {
                position += (int) name.length();
                return true;
            }
        }

        return *position != '<' && skipPast (";");
    }

    /** Blanks, comments and processing instructions. At the end of the text, and behind the start of a comment
        or instruction that has no end, the reader still finishes the element that it is in.
    */
    void skipBlanks()
    {
        for (;;)
        {
            position.incrementToEndOfWhitespace();
            const auto isInstruction = startsWith ("<?");
            hasSkippedInstruction = hasSkippedInstruction || isInstruction;
            const auto isComment = startsWith ("<!--");

            if (! isInstruction && ! isComment)
            {
                isAtEnd = isAtEnd || position.isEmpty();
                return;
            }

            if (! (isInstruction ? skipPast ("?>", 2) : skipPast ("-->", 4)))
            {
                isAtEnd = true;
                return;
            }
        }
    }

    /** To behind the first such end, looked for from some characters on; to those where there is none. */
    bool skipPast (juce::StringRef end, int numCharactersBefore = 0)
    {
        position += numCharactersBefore;
        const auto found = juce::CharacterFunctions::find (position, end.text);

        if (found.isEmpty())
            return false;

        position = found + (int) end.length();
        return true;
    }

    bool startsWith (juce::StringRef prefix) const
    {
        return position.compareUpTo (prefix.text, (int) prefix.length()) == 0;
    }

    Characters position;
    std::unordered_set<std::string_view> names;
    int depth = 0;
    int numElements = 0;
    bool hasSkippedInstruction = false;
    bool isAtEnd = false;
};
} // namespace

juce::String findReadableXml (const juce::String& text)
{
    if (text.getNumBytesAsUTF8() > (size_t) xmlLimits::maxTextBytes)
        return {};

    return XmlScanner (text).findDocumentElement();
}

bool hasWholeStartTag (const juce::String& firstBytes)
{
    return XmlScanner (firstBytes).hasWholeStartTag();
}
} // namespace cv::pluginCore
