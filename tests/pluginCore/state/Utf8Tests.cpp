#include "pluginCore/state/Utf8.h"

#include <gmock/gmock.h>

namespace cv::pluginCore
{
namespace
{
/** Checks a copy in memory of exactly its size, so that reading beyond the end is noticed. */
bool isWellFormed (const std::string& text)
{
    const std::vector<char> bytes (text.begin(), text.end());
    return isWellFormedUtf8 (bytes.data(), bytes.size());
}

TEST (Utf8, TakesEveryCharacterThereIs)
{
    EXPECT_TRUE (isWellFormed (""));
    EXPECT_TRUE (isWellFormed (std::string ("a\0b", 3)));

    const auto isCharacter = [] (int code) { return code < 0xd800 || code > 0xdfff; };

    for (auto code = 1; code <= 0x10ffff; ++code)
        ASSERT_EQ (isWellFormed (juce::String::charToString ((juce::juce_wchar) code).toStdString()),
                   isCharacter (code))
            << code;
}

TEST (Utf8, RefusesWhatIsNone)
{
    for (const auto* text : { "\x80",
                              "\xbf"
                              "a",
                              "\xc3",
                              "\xc3"
                              "a",
                              "\xe9"
                              "Live",
                              "\xe9\x9f",
                              "\xe9\x9f"
                              "a",
                              "\xf0\x9f\x8e",
                              "\xf0\x9f\x8e"
                              "a",
                              "\xc0\xaf", "\xc1\xbf", "\xe0\x9f\xbf", "\xf0\x8f\xbf\xbf", "\xed\xa0\x80",
                              "\xed\xbf\xbf", "\xf4\x90\x80\x80", "\xf8\x88\x80\x80\x80", "\xfe", "\xff" })
        EXPECT_FALSE (isWellFormed (text)) << text;
}
} // namespace
} // namespace cv::pluginCore
