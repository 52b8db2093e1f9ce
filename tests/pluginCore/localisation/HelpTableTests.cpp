#include "pluginCore/localisation/LocalisedStringsManager.h"
#include "support/KeptTranslations.h"
#include "support/TranslationTable.h"

#include <gmock/gmock.h>

#include <regex>

namespace cv::pluginCore
{
namespace
{
using testing::ElementsAreArray;

juce::String lowerCase (const std::string& text)
{
    return juce::String::fromUTF8 (text.c_str()).toLowerCase();
}

class HelpTableTest : public testing::Test
{
protected:
    const test::KeptTranslations keptTranslations;
    LocalisedStringsManager manager;
};

TEST_F (HelpTableTest, AllLanguagesHaveTheSameRows)
{
    const TranslationTable english ("help_en");
    ASSERT_FALSE (english.rows.empty());

    for (const auto& row : english.rows)
        EXPECT_EQ (row.value, row.key);

    for (const auto& language : LocalisedStringsManager::getLanguages())
    {
        const TranslationTable table ("help_" + std::string (language.code));
        EXPECT_THAT (table.getKeys(), ElementsAreArray (english.getKeys())) << language.code;
        EXPECT_THAT (table.text, testing::StartsWith (TranslationTable (language.code).text.substr (0, 11)));
        EXPECT_EQ (table.otherLines[1], "countries: [" + std::string (language.code) + "]");
    }
}

TEST_F (HelpTableTest, ItsRowsAreFoundInEachLanguage)
{
    for (const auto& language : LocalisedStringsManager::getLanguages())
    {
        ASSERT_TRUE (manager.setLanguage (language.code));

        for (const auto& row : TranslationTable ("help_" + std::string (language.code)).rows)
            EXPECT_EQ (juce::translate (juce::String (row.key)), juce::String::fromUTF8 (row.value.c_str()))
                << language.code;
    }
}

TEST_F (HelpTableTest, NoRowIsInTheFirstTableInWhateverCase)
{
    for (const auto& language : LocalisedStringsManager::getLanguages())
        for (const auto& help : TranslationTable ("help_" + std::string (language.code)).rows)
            for (const auto& row : TranslationTable (language.code).rows)
                EXPECT_NE (lowerCase (help.key), lowerCase (row.key)) << language.code;
}

TEST_F (HelpTableTest, FrenchTextsBindTheirPunctuation)
{
    const std::regex loosePunctuation (R"([^ ] +[!?:;])");

    for (const auto& row : TranslationTable ("help_fr").rows)
        EXPECT_FALSE (std::regex_search (row.value, loosePunctuation)) << row.value;
}
} // namespace
} // namespace cv::pluginCore
