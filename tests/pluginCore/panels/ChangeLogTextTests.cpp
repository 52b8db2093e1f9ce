#include "pluginCore/panels/ChangeLogText.h"

#include "pluginCore/lookAndFeel/CvFonts.h"

#include <gtest/gtest.h>

namespace cv::pluginCore
{
namespace
{
constexpr int maxCharacters = 2048;
constexpr int maxWords = 400;
constexpr int maxForeignRuns = 32;
constexpr int maxWordCharacters = 40;

const juce::String cutMark = juce::String::fromUTF8 ("\n…");

class ChangeLogTextTest : public testing::Test
{
protected:
    juce::String getShown (const juce::String& text) const { return getShownChangeLog (text, fonts.regular); }

    const CvFonts fonts;
};

TEST_F (ChangeLogTextTest, IsTheTextAsItStands)
{
    for (const auto* text : { "", "It glides now.", "1.0.1\n\n - Écho\n - \"louder\"\n", "\n\n" })
        EXPECT_EQ (getShown (juce::String::fromUTF8 (text)), juce::String::fromUTF8 (text));

    const auto longest = juce::String::repeatedString ("0123456789abcde\n", maxCharacters / 16);
    EXPECT_EQ (getShown (longest), longest);
}

TEST_F (ChangeLogTextTest, IsTheBeginningOfALongText)
{
    const auto text = juce::String::repeatedString ("0123456789abcde\n", 16 * 1024);
    EXPECT_EQ (getShown (text), text.substring (0, maxCharacters).trimEnd() + cutMark);

    const auto manyWords = juce::String::repeatedString ("x ", maxWords).trimEnd();
    EXPECT_EQ (getShown (manyWords + "\n"), manyWords + "\n");
    EXPECT_EQ (getShown (manyWords + "\nx"), manyWords + cutMark);
}

TEST_F (ChangeLogTextTest, DividesLongWords)
{
    const auto longest = juce::String::repeatedString ("x", maxWordCharacters);
    EXPECT_EQ (getShown (longest + "\n" + longest), longest + "\n" + longest);
    EXPECT_EQ (getShown (longest + longest + "xx y"), longest + " " + longest + " xx y");
}

TEST_F (ChangeLogTextTest, ShowsOnlyWhatCanBeShaped)
{
    EXPECT_EQ (getShown (juce::String::fromUTF8 ("a\x1c"
                                                 "b\xcc\x81\tc")),
               "ab c");
    EXPECT_EQ (getShown (juce::String::repeatedString ("\n", 2 * maxCharacters)), "");
    EXPECT_EQ (getShown (juce::String::repeatedString (juce::String::charToString (0x301), 2 * maxCharacters)), "");
}

TEST_F (ChangeLogTextTest, AsksForFewOtherFonts)
{
    const auto foreign = juce::String::fromUTF8 ("漢字");
    const auto allowed = juce::String::repeatedString (foreign + " ", maxForeignRuns).trimEnd();

    EXPECT_EQ (getShown (allowed), allowed);
    EXPECT_EQ (getShown (allowed + "\n" + foreign + " more"), allowed + cutMark);

    // One run may be long, but its characters are wide.
    const auto run = juce::String::repeatedString ("x", maxWordCharacters / 3).replace ("x", foreign.substring (0, 1));
    EXPECT_EQ (getShown (run), run);
    EXPECT_EQ (getShown (run + run), run + " " + run);

    const auto runs = juce::String::repeatedString (run + " ", maxForeignRuns).trimEnd();
    EXPECT_EQ (getShown (runs.removeCharacters (" ") + foreign), runs + cutMark);
}
} // namespace
} // namespace cv::pluginCore
