#include "pluginCore/text/ShapeableText.h"

#include <gtest/gtest.h>

namespace cv::pluginCore
{
namespace
{
juce::String utf8 (const char* text)
{
    return juce::String::fromUTF8 (text);
}

juce::String character (juce::juce_wchar code)
{
    return juce::String::charToString (code);
}

TEST (ShapeableText, IsWhatPeopleWrite)
{
    for (const auto* text : { "", " ", "Version 1.0.1 (2026): 50 % louder, -3 dB & \"no\" <clicks> ~{[*]}!",
                              "line\nline\n\n", "Écho délavé, Größe, ñandú, coração, Øresund, Łódź, İstanbul, Việt Nam",
                              "Ηχώ", "Эхо, Луна, Київ", "Արձագանք", "ექო", "回声", "エコー、ひらがな", "메아리",
                              "€ £ ¥ ° ± µ × ÷ … – — “” «» • → ≤ ∞ ♫ ✓", "😀 🎸 🔊 🚀" })
    {
        EXPECT_EQ (getShapeableText (utf8 (text)), utf8 (text)) << text;
        EXPECT_EQ (getShapeableLine (utf8 (text)), utf8 (text).replace ("\n", " ")) << text;
    }
}

TEST (ShapeableText, IsWithoutWhatJoinsItsNeighbour)
{
    EXPECT_EQ (getShapeableText (utf8 ("e\xcc\x81")), "e");                                  // combining acute
    EXPECT_EQ (getShapeableText (utf8 ("👍🏽")), utf8 ("👍"));                            // skin tone
    EXPECT_EQ (getShapeableText (utf8 ("👩\xe2\x80\x8d🎤")), utf8 ("👩🎤"));                     // joiner
    EXPECT_EQ (getShapeableText (utf8 ("❤\xef\xb8\x8f")), utf8 ("❤"));                       // variation selector
    EXPECT_EQ (getShapeableText (utf8 ("🇫🇷!")), "!");                                        // flag
    EXPECT_EQ (getShapeableText (utf8 ("か\xe3\x82\x99")), utf8 ("か"));                     // voicing
    EXPECT_EQ (getShapeableText (utf8 ("\xef\xbd\xb6\xef\xbe\x9e")), utf8 ("\xef\xbd\xb6")); // its narrow form
    EXPECT_EQ (getShapeableText (character (0xe0041)), "");                                  // tag
}

TEST (ShapeableText, IsWithoutWhatIsNotSeen)
{
    for (juce::juce_wchar code = 1; code < 0xa1; ++code)
    {
        const auto isShown = code >= 0x20 && code < 0x7f;
        const auto isSpace = code == 0x09 || code == 0xa0;
        const auto isLineEnd = (code >= 0x0a && code <= 0x0d) || code == 0x85;
        const juce::String expected = isShown ? character (code) : isSpace ? " " : isLineEnd ? "\n" : "";
        EXPECT_EQ (getShapeableText (character (code)), expected) << (int) code;
    }

    for (const auto code :
         { 0xad, 0x61c, 0x200b, 0x200e, 0x200f, 0x202a, 0x202e, 0x2060, 0x2066, 0x2069, 0xfeff, 0xfff9 })
        EXPECT_EQ (getShapeableText ("a" + character ((juce::juce_wchar) code) + "b"), "ab") << code;

    for (const auto code : { 0x1680, 0x2003, 0x202f, 0x205f, 0x3000 })
        EXPECT_EQ (getShapeableText ("a" + character ((juce::juce_wchar) code) + "b"), "a b") << code;

    for (const auto code : { 0x2028, 0x2029 })
        EXPECT_EQ (getShapeableText ("a" + character ((juce::juce_wchar) code) + "b"), "a\nb") << code;
}

TEST (ShapeableText, EndsAllLinesAlike)
{
    EXPECT_EQ (getShapeableText ("a\r\nb\rc\nd\r\n\r\ne\n\rf"), "a\nb\nc\nd\n\ne\n\nf");
    EXPECT_EQ (getShapeableLine ("a\r\nb\tc"), "a b c");
}

TEST (ShapeableText, AsksAboutAllElse)
{
    EXPECT_EQ (getShapeableText (utf8 ("क")), "?");         // a script that needs marks
    EXPECT_EQ (getShapeableText (utf8 ("שָׁלוֹם")), "????");   // from right to left, with points
    EXPECT_EQ (getShapeableText (utf8 ("مُدَّة 1")), "??? 1"); // the same with vowel signs
    EXPECT_EQ (getShapeableText (character (0x378)), "?");  // unassigned
    EXPECT_EQ (getShapeableText (character (0x1100)), "?"); // part of a Korean syllable
    EXPECT_EQ (getShapeableText (character (0x3164)), "?"); // blank letter
    EXPECT_EQ (getShapeableText (character (0xe000)), "?"); // private
    EXPECT_EQ (getShapeableText (character (0xffff)), "?");
    EXPECT_EQ (getShapeableText (character (0x10ffff)), "?");
}

TEST (ShapeableText, KeepsTheAsciiOfWhatIsNoUtf8)
{
    for (const auto* bytes : { "\xe9", "Caf\xe9", "\xf0\x9f\x98", "a\xed\xa0\xbc\xed\xbe\xb8", "\xff\xfe" })
    {
        const auto shown = getShapeableLine (juce::String (juce::CharPointer_UTF8 { bytes }));
        EXPECT_TRUE (shown.containsChar ('?'));
        EXPECT_EQ (shown, shown.retainCharacters ("Cafa?"));
    }
}

TEST (ShapeableText, NamesAreNeverBlankForWhatIsLeftOut)
{
    EXPECT_EQ (getShapeableLine (character (0x301)), "?");
    EXPECT_EQ (getShapeableText (character (0x301)), "");
    EXPECT_EQ (getShapeableLine ({}), "");
}

/** The fuzzer's hours are worth something for these very characters alone. Whoever lets others through has to let it run
    again, and then to write down here how many they are, and what the FNV-1a hash over what becomes of each is.
*/
TEST (ShapeableText, LetsThroughWhatWasFuzzed)
{
    constexpr juce::uint64 hashStart = 0xcbf29ce484222325, hashFactor = 0x100000001b3;

    auto hash = hashStart;
    auto numShown = 0, numOmitted = 0;

    for (juce::juce_wchar code = 1; code <= 0x10ffff; ++code)
    {
        if (code >= 0xd800 && code <= 0xdfff)
            continue;

        const auto shown = getShapeableText (character (code))[0];
        numShown += shown == code ? 1 : 0;
        numOmitted += shown == 0 ? 1 : 0;
        hash = (hash ^ (juce::uint64) shown) * hashFactor;
    }

    EXPECT_EQ (numShown, 115'124);
    EXPECT_EQ (numOmitted, 4808);
    EXPECT_EQ (hash, 12268658924825960333u);
}

/** What is let through once is let through again, whatever the character. */
TEST (ShapeableText, IsShapeable)
{
    for (juce::juce_wchar code = 1; code <= 0x10ffff; ++code)
    {
        if (code >= 0xd800 && code <= 0xdfff)
            continue;

        const auto shown = getShapeableText (character (code));
        EXPECT_EQ (getShapeableText (shown), shown) << (int) code;
    }
}
} // namespace
} // namespace cv::pluginCore
