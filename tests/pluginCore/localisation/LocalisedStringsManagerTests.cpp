#include "pluginCore/localisation/LocalisedStringsManager.h"

#include "support/KeptTranslations.h"
#include "support/SystemLanguage.h"
#include "support/TranslationTable.h"

#include <gmock/gmock.h>

#include <clocale>
#include <cstdlib>

namespace cv::pluginCore
{
namespace
{
/** No language has this code, nor will one. */
constexpr auto unknownLanguage = "xx";

std::string translated (const char* text)
{
    return juce::translate (text).toStdString();
}

/** Notes what the hook is told, and which "close" is in force at that moment. */
class RecordingManager final : public LocalisedStringsManager
{
public:
    std::vector<std::string> calls;

private:
    void languageChanged (const juce::String& code) override
    {
        calls.push_back (code.toStdString() + ": " + translated ("close"));
    }
};

class LocalisedStringsManagerTest : public testing::Test
{
protected:
    LocalisedStringsManagerTest() { juce::LocalisedStrings::setCurrentMappings (nullptr); }

    const cv::test::KeptTranslations keptTranslations;
    RecordingManager manager;
};

TEST_F (LocalisedStringsManagerTest, ChoosesNothingByItself)
{
    EXPECT_EQ (manager.getLanguageCode(), "");
    EXPECT_EQ (juce::LocalisedStrings::getCurrentMappings(), nullptr);
    EXPECT_THAT (manager.calls, testing::IsEmpty());
}

TEST_F (LocalisedStringsManagerTest, PutsEachLanguagesTableInForce)
{
    std::vector<std::string> expectedCalls;

    for (const auto& language : LocalisedStringsManager::getLanguages())
    {
        const std::string code = language.code;
        EXPECT_TRUE (manager.setLanguage (code));
        EXPECT_EQ (manager.getLanguageCode(), juce::String (code));

        const auto* const mappings = juce::LocalisedStrings::getCurrentMappings();
        ASSERT_NE (mappings, nullptr);

        const auto text = juce::String::fromUTF8 (TranslationTable (code).text.c_str());
        EXPECT_EQ (mappings->getMappings(), juce::LocalisedStrings (text, false).getMappings());
        expectedCalls.push_back (code + ": " + TranslationTable (code).getValue ("close"));
    }

    EXPECT_EQ (manager.calls, expectedCalls);
}

TEST_F (LocalisedStringsManagerTest, LeavesTheTableInForceForAnUnknownCode)
{
    ASSERT_TRUE (manager.setLanguage ("fr"));
    const auto* const mappings = juce::LocalisedStrings::getCurrentMappings();
    manager.calls.clear();

    for (const auto* const code : { unknownLanguage, "", "EN", "fr-CA", "french" })
        EXPECT_FALSE (manager.setLanguage (code)) << code;

    EXPECT_EQ (manager.getLanguageCode(), "fr");
    EXPECT_EQ (juce::LocalisedStrings::getCurrentMappings(), mappings);
    EXPECT_THAT (manager.calls,
                 testing::ElementsAre ("xx: fermer", ": fermer", "EN: fermer", "fr-CA: fermer", "french: fermer"));
}

TEST_F (LocalisedStringsManagerTest, LeavesTextsUntranslatedWhenTheFirstCodeIsUnknown)
{
    EXPECT_FALSE (manager.setLanguage (unknownLanguage));
    EXPECT_EQ (manager.getLanguageCode(), "");
    EXPECT_EQ (juce::LocalisedStrings::getCurrentMappings(), nullptr);
    EXPECT_THAT (manager.calls, testing::ElementsAre ("xx: close"));
}

TEST_F (LocalisedStringsManagerTest, EnglishIsATableToo)
{
    manager.setLanguage ("en");
    EXPECT_EQ (translated ("Delete Preset"), "Delete");
    EXPECT_EQ (translated ("Display sync delay times as:"), "Synced times:");
    EXPECT_EQ (translated ("Copy to clipboard"), "Copy to clipboard      ");
}

TEST_F (LocalisedStringsManagerTest, LooksUpExactlyFirst)
{
    manager.setLanguage ("fr");
    EXPECT_EQ (translated ("OK"), "OK");
    EXPECT_EQ (translated ("ok"), "ok");
    EXPECT_EQ (translated ("About"), "À propos");
    EXPECT_EQ (translated ("about"), "à propos");
    EXPECT_EQ (translated ("Last Loaded Preset"), "Dernier Preset Chargé");
    EXPECT_EQ (translated ("last loaded preset"), "dernier preset chargé");
}

TEST_F (LocalisedStringsManagerTest, ThenWithoutRegardToCase)
{
    manager.setLanguage ("fr");
    EXPECT_EQ (translated ("FREEZE parameters"), "Geler des Paramètres");
    EXPECT_EQ (translated ("report latency"), "Rapportez la latence");
    EXPECT_EQ (translated ("CLOSE"), "fermer");
}

TEST_F (LocalisedStringsManagerTest, GivesATextInNoRowBack)
{
    manager.setLanguage ("fr");
    EXPECT_EQ (translated ("Hide TapTempo buttons"), "Hide TapTempo buttons");
    EXPECT_EQ (translated ("Corvane Presets"), "Corvane Presets");
    EXPECT_EQ (translated (""), "");
}

TEST_F (LocalisedStringsManagerTest, PortugueseMoveToLosesItsStrayQuote)
{
    manager.setLanguage ("pt");
    EXPECT_EQ (translated ("move to"), "mover para");
    EXPECT_EQ (translated ("Move to"), "Mover para");
}

TEST_F (LocalisedStringsManagerTest, TableOutlivesItsManager)
{
    {
        LocalisedStringsManager other;
        other.setLanguage ("es");
    }

    EXPECT_EQ (translated ("close"), "cerrar");
}

struct Choice
{
    const char* displayLanguage;
    const char* code;
    const char* close;
};

constexpr Choice choices[] {
    { "en", "en", "close" },      { "eng", "en", "close" },
    { "en-US", "en", "close" },   { "fr", "fr", "fermer" },
    { "fre", "fr", "fermer" },    { "fr-CA", "fr", "fermer" },
    { "es", "es", "cerrar" },     { "spa", "es", "cerrar" },
    { "es-419", "es", "cerrar" }, { "pt", "pt", "fechar" },
    { "por", "pt", "fechar" },    { "pt-BR", "pt", "fechar" },
    { "pt-PT", "pt", "fechar" },  { "pt-Latn-BR", "pt", "fechar" },
    { "xx", "en", "close" },      { "xx-CH", "en", "close" },
    { "", "en", "close" },        { "-fr", "en", "close" },
    { "FR", "en", "close" },      { "fra", "en", "close" },
    { "French", "en", "close" },  { "fr_FR", "en", "close" },
    { " fr", "en", "close" },
};

TEST_F (LocalisedStringsManagerTest, FindsEachLanguageByItsCodes)
{
    for (const auto& language : LocalisedStringsManager::getLanguages())
    {
        EXPECT_EQ (LocalisedStringsManager::languageCodeFor (language.code), language.code);
        EXPECT_EQ (LocalisedStringsManager::languageCodeFor (language.threeLetterCode), language.code);
        EXPECT_EQ (juce::String (language.threeLetterCode).length(), 3) << language.code;
    }
}

TEST_F (LocalisedStringsManagerTest, MapsEveryDisplayLanguageToATable)
{
    for (const auto& choice : choices)
    {
        const auto code = LocalisedStringsManager::languageCodeFor (choice.displayLanguage);
        EXPECT_EQ (code, choice.code) << choice.displayLanguage;
        EXPECT_TRUE (manager.setLanguage (code));
        EXPECT_EQ (translated ("close"), choice.close) << choice.displayLanguage;
    }
}

TEST_F (LocalisedStringsManagerTest, AsksTheSystemForItsLanguage)
{
    for (const auto& [language, region, code] :
         { std::tuple { "fr", "CA", "fr" }, { "pt", "BR", "pt" }, { "es", "", "es" }, { unknownLanguage, "CH", "en" } })
    {
        const cv::test::SystemLanguage systemLanguage (language, region);
        EXPECT_EQ (LocalisedStringsManager::systemLanguageCode(), code);
    }

    EXPECT_EQ (LocalisedStringsManager::systemLanguageCode(), "en");
}

TEST_F (LocalisedStringsManagerTest, AskingLeavesTheHostInItsLocale)
{
    const auto* const variable = std::getenv ("LC_ALL");
    const std::string formerValue = variable != nullptr ? variable : "";
    const std::string formerLocale = std::setlocale (LC_ALL, nullptr);

    setenv ("LC_ALL", "C.UTF-8", 1);
    std::setlocale (LC_ALL, "C");
    LocalisedStringsManager::systemLanguageCode();
    EXPECT_STREQ (std::setlocale (LC_ALL, nullptr), "C");

    std::setlocale (LC_ALL, formerLocale.c_str());

    if (variable != nullptr)
        setenv ("LC_ALL", formerValue.c_str(), 1);
    else
        unsetenv ("LC_ALL");
}
} // namespace
} // namespace cv::pluginCore
