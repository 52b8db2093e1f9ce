#include "pluginCore/panels/ChangeLogText.h"

#include "pluginCore/text/ShapeableText.h"

namespace cv::pluginCore
{
namespace
{
// Laying out takes time with each word, far more with each run of characters that the font lacks, since the system
// is asked for another font then, and with the square of a word's length. The worst text within these limits is laid
// out in less than 50 ms; whole change logs are on the product's page.
constexpr int maxCharacters = 2048;
constexpr int maxWords = 400;
constexpr int maxForeignRuns = 32;
constexpr int maxWordLength = 40;

// Characters that the font lacks are wide ones as a rule, and a word that is wider than the panel is laid out again
// for each of its lines.
constexpr int foreignLength = 3;

/** Takes over characters as long as the limits allow it, and puts spaces into long words. */
class Beginning
{
public:
    explicit Beginning (juce::Typeface::Ptr fontTypeface) : typeface (std::move (fontTypeface)) {}

    /** False, and the character isn't taken, when it would be one too many. */
    bool append (juce::juce_wchar character)
    {
        const auto isSpace = juce::CharacterFunctions::isWhitespace (character);
        const auto isForeign =
            ! isSpace && typeface != nullptr && ! typeface->getNominalGlyphForCodepoint (character).has_value();
        const auto length = isForeign ? foreignLength : 1;
        const auto dividesWord = ! isSpace && wordLength + length > maxWordLength;

        if (isSpace || dividesWord)
        {
            wordLength = 0;
            wasForeign = false;
        }

        if (! isSpace && wordLength == 0 && ++numWords > maxWords)
            return false;

        if (isForeign && ! std::exchange (wasForeign, isForeign) && ++numForeignRuns > maxForeignRuns)
            return false;

        if (dividesWord)
            text.appendUTF8Char (' ');

        wasForeign = isForeign;
        wordLength += isSpace ? 0 : length;
        return text.appendUTF8Char (character);
    }

    juce::String getText() const { return text.toUTF8(); }

private:
    const juce::Typeface::Ptr typeface;
    juce::MemoryOutputStream text;
    bool wasForeign = false;
    int numWords = 0;
    int numForeignRuns = 0;
    int wordLength = 0;
};
} // namespace

juce::String getShownChangeLog (const juce::String& text, const juce::Font& font)
{
    Beginning beginning (font.getTypefacePtr());
    auto isWhole = text.length() <= maxCharacters;

    for (const auto character : getShapeableText (text.substring (0, maxCharacters)))
    {
        if (! beginning.append (character))
        {
            isWhole = false;
            break;
        }
    }

    if (isWhole)
        return beginning.getText();

    constexpr juce::juce_wchar ellipsis = 0x2026;
    const auto shown = beginning.getText().trimEnd();
    return shown.isEmpty() ? shown : shown + "\n" + juce::String::charToString (ellipsis);
}
} // namespace cv::pluginCore
