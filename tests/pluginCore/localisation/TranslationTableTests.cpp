#include "pluginCore/localisation/LocalisedStringsManager.h"
#include "support/TranslationTable.h"

#include <gmock/gmock.h>
#include <juce_core/juce_core.h>

#include <algorithm>
#include <map>
#include <regex>

namespace cv::pluginCore
{
namespace
{
constexpr const char* noBreakSpace = "\xc2\xa0";
constexpr const char* englishOnlyKey = "Hide TapTempo buttons";
constexpr int numKeys = 306;

/** The keys as they are to stand in the tables, in table order. */
std::vector<std::string> expectedKeys (const std::string& code)
{
    std::vector<std::string> keys;

    for (const auto& line : readLines (VARLO_TEST_FOLDER "/pluginCore/localisation/translationKeys.txt"))
        keys.push_back (line.substr (1, line.size() - 2));

    EXPECT_EQ (keys.size(), (size_t) numKeys);

    if (code != "en")
        std::erase (keys, englishOnlyKey);

    return keys;
}

/** What a translator must not lose, and in no language does a row gain any of it. */
std::vector<std::string> markupOf (const std::string& text)
{
    static const std::regex markup (R"(%[^% ]*%|\*\*|\\[nrt"])");
    std::vector<std::string> found { std::sregex_token_iterator (text.begin(), text.end(), markup), {} };
    std::sort (found.begin(), found.end());
    return found;
}

std::string blanksAround (const std::string& text)
{
    const auto start = text.find_first_not_of (' ');
    const auto end = text.find_last_not_of (' ');
    return std::to_string (start) + " before, " + std::to_string (text.size() - 1 - end) + " behind";
}

/** Whether the first letter is a capital, of those that the four languages know. */
bool startsWithCapital (const std::string& text)
{
    const auto string = juce::String::fromUTF8 (text.c_str());

    for (auto c = string.getCharPointer(); ! c.isEmpty(); ++c)
    {
        if ((*c >= 'A' && *c <= 'Z') || (*c >= 0xc0 && *c <= 0xde))
            return true;

        if ((*c >= 'a' && *c <= 'z') || (*c >= 0xdf && *c <= 0xff))
            return false;
    }

    ADD_FAILURE() << "no letter in: " << text;
    return false;
}

std::vector<std::string> getCodes()
{
    std::vector<std::string> codes;

    for (const auto& language : LocalisedStringsManager::getLanguages())
        codes.emplace_back (language.code);

    return codes;
}

class TranslationTableTest : public testing::TestWithParam<std::string>
{
protected:
    const std::string code = GetParam();
    const TranslationTable table { code };
};

INSTANTIATE_TEST_SUITE_P (Languages,
                          TranslationTableTest,
                          testing::ValuesIn (getCodes()),
                          [] (const auto& language) { return language.param; });

TEST_P (TranslationTableTest, IsUtf8WithoutAByteOrderMark)
{
    const auto& text = table.text;
    EXPECT_TRUE (juce::CharPointer_UTF8::isValidString (text.c_str(), (int) text.size()));
    EXPECT_EQ (text.find ("\xef\xbb\xbf"), std::string::npos);
    EXPECT_EQ (text.find ('\0'), std::string::npos);
    EXPECT_EQ (text.find ('\r'), std::string::npos);
    EXPECT_EQ (text.find ('\t'), std::string::npos);
    EXPECT_EQ (text.back(), '\n');
}

TEST_P (TranslationTableTest, BeginsWithItsLanguageAndCountry)
{
    const std::map<std::string, std::string> names {
        { "en", "english" }, { "fr", "french" }, { "es", "spanish" }, { "pt", "portuguese (br)" }
    };

    // A name, and the country that it is of where there are several.
    const auto known = names.find (code);
    const auto name = known != names.end() ? testing::Matcher<std::string> (known->second)
                                           : testing::MatchesRegex ("[a-z]+( [(][a-z]+[)])?");

    ASSERT_GE (table.otherLines.size(), 2u);
    const auto& line = table.otherLines[0];
    ASSERT_THAT (line, testing::AllOf (testing::StartsWith ("language: ["), testing::EndsWith ("]")));
    EXPECT_THAT (line.substr (11, line.size() - 12), name);
    EXPECT_EQ (table.otherLines[1], "countries: [" + code + "]");
    EXPECT_THAT (table.text, testing::StartsWith (line + "\n" + table.otherLines[1] + "\n"));
}

TEST_P (TranslationTableTest, HoldsOnlyRowsBlankLinesAndCommentsBehindThat)
{
    ASSERT_GE (table.otherLines.size(), 2u);

    for (auto i = (size_t) 2; i < table.otherLines.size(); ++i)
        EXPECT_THAT (table.otherLines[i], testing::AnyOf ("", testing::StartsWith ("// ")));
}

TEST_P (TranslationTableTest, HasTheSizeOfAFullTable)
{
    const auto isEnglish = code == "en";
    EXPECT_GE (table.text.size(), isEnglish ? 14000u : 15000u);
    EXPECT_LE (table.text.size(), isEnglish ? 17000u : 19000u);
}

TEST_P (TranslationTableTest, HoldsEveryKeyInOrder)
{
    EXPECT_THAT (table.getKeys(), testing::ElementsAreArray (expectedKeys (code)));
}

TEST_P (TranslationTableTest, HasEveryRowLoadedByJuce)
{
    const juce::LocalisedStrings loaded (juce::String::fromUTF8 (table.text.c_str()), false);
    EXPECT_EQ (loaded.getMappings().size(), (int) table.rows.size());

    for (const auto& row : table.rows)
    {
        const auto key = juce::String::fromUTF8 (unescaped (row.key).c_str());
        const auto isOdd = code == "pt" && row.key == "move to";
        const auto expected = isOdd ? "mover para" : unescaped (row.value);

        EXPECT_EQ (loaded.translate (key, "(no row)").toStdString(), expected) << row.key;
    }
}

TEST_P (TranslationTableTest, KeepsPlaceholdersAsterisksAndEscapes)
{
    for (const auto& row : table.rows)
        EXPECT_EQ (markupOf (row.key), markupOf (row.value)) << row.key;
}

TEST_P (TranslationTableTest, KeepsTheBlanksAroundAText)
{
    for (const auto& row : table.rows)
    {
        if ((code == "en" && row.key == "Copy to clipboard")
            || ((code == "fr" || code == "es") && row.key == " - Save Preset"))
            continue;

        EXPECT_EQ (blanksAround (row.key), blanksAround (row.value)) << row.key;
    }
}

TEST_P (TranslationTableTest, WritesCapitalsWhereTheKeyDoes)
{
    for (const auto& row : table.rows)
        EXPECT_EQ (startsWithCapital (row.key), startsWithCapital (row.value)) << row.key;
}

TEST_P (TranslationTableTest, SaysTheSameWithAndWithoutAsterisks)
{
    const std::regex asterisks (R"(\*\*)");
    auto numPairs = 0;

    for (const auto& row : table.rows)
    {
        const auto plainKey = std::regex_replace (row.key, asterisks, "");

        if (plainKey == row.key || table.getValue (plainKey) == "(no row)")
            continue;

        EXPECT_EQ (std::regex_replace (row.value, asterisks, ""), table.getValue (plainKey));
        ++numPairs;
    }

    EXPECT_EQ (numPairs, 8);
}

TEST (TranslationTables, HaveOneRowWithAStrayQuote)
{
    const std::regex bareQuote ("(^|[^\\\\])\"");
    std::vector<std::string> odd;

    for (const auto& code : getCodes())
        for (const auto& row : TranslationTable (code).rows)
            if (std::regex_search (row.key, bareQuote) || std::regex_search (row.value, bareQuote))
                odd.push_back (code + ": " + row.key + " = " + row.value);

    EXPECT_THAT (odd, testing::ElementsAre ("pt: move to = mover para\""));
    EXPECT_THAT (TranslationTable ("pt").text, testing::HasSubstr ("\n\"move to\" = \"mover para\"\"\n"));
}

TEST (TranslationTables, EnglishRewordsFourRowsAndNoOther)
{
    std::map<std::string, std::string> reworded;

    for (const auto& row : TranslationTable ("en").rows)
        if (row.value != row.key)
            reworded[row.key] = row.value;

    const std::map<std::string, std::string> expected {
        { "Delete Preset", "Delete" },
        { "Display sync delay times as:", "Synced times:" },
        { "Copy to clipboard", "Copy to clipboard      " },
        { "Checked parameters will not get changed when loading presets",
          "Checked parameters will not change when loading presets" },
    };

    EXPECT_EQ (reworded, expected);
}

TEST (TranslationTables, FrenchAndSpanishSavePresetBeginsWithANoBreakSpace)
{
    const std::string key = " - Save Preset";
    EXPECT_EQ (TranslationTable ("fr").getValue (key), noBreakSpace + std::string ("- Enregistrement d'un preset"));
    EXPECT_EQ (TranslationTable ("es").getValue (key), noBreakSpace + std::string ("- Guardar como Preset"));
    EXPECT_EQ (TranslationTable ("pt").getValue (key), " - Salvar como Preset");
}

TEST (TranslationTables, FrenchTextsBindTheirPunctuation)
{
    const std::regex loosePunctuation (R"([^ ] +[!?:;])");

    for (const auto& row : TranslationTable ("fr").rows)
        EXPECT_FALSE (std::regex_search (row.value, loosePunctuation)) << row.value;
}

struct SettledRow
{
    const char* key;
    const char* french;
    const char* spanish;
    const char* portuguese;
};

// The wording of these is settled, slips included.
constexpr SettledRow settledRows[] {
    { "about", "à propos", "acerca de", "sobre" },
    { "Name", "Nom", "Nombre", "Nome" },
    { "Last Loaded Preset", "Dernier Preset Chargé", "Ultimo Preset", "Último Preset" },
    { "Save Preset", "Enregistrement d'un preset", "Guardar como Preset", "Salvar como Preset" },
    { "Freeze Parameters", "Geler des Paramètres", "Bloquear Parámetros", "Bloquear Parâmetros" },
    { "A new version is available", "Une nouvelle version est disponible", "Una nueva versión está disponible",
      "Há uma atualização disponível" },
    { "proceed to download page", "visiter la page de téléchargement", "ver página de descarga",
      "continuar para a página de download" },
    { "close", "fermer", "cerrar", "fechar" },
    { "Automatically check for new versions", "Vérifier automatiquement les mises à jours",
      "Buscar actualizaciones automáticamente", "Buscar atualizaçãos automaticamente" },
    { "Hide Tap Tempo buttons", "Cacher les boutons Tap Tempo", "Ocultar botones de Tap Tempo",
      "Ocultar os botãos Tap Tempo" },
    { "Report Latency", "Rapportez la latence", "Reportar la latencia", "Reportar a latência" },
};

TEST (TranslationTables, KeepSettledRows)
{
    const TranslationTable english ("en");
    const TranslationTable french ("fr");
    const TranslationTable spanish ("es");
    const TranslationTable portuguese ("pt");

    for (const auto& row : settledRows)
    {
        EXPECT_EQ (english.getValue (row.key), row.key);
        EXPECT_EQ (french.getValue (row.key), row.french);
        EXPECT_EQ (spanish.getValue (row.key), row.spanish);
        EXPECT_EQ (portuguese.getValue (row.key), row.portuguese);
    }
}

struct ChosenWording
{
    const char* language;
    const char* key;
    const char* value;
};

// What musicians say in these languages, where a dictionary has another word too.
constexpr ChosenWording chosenWordings[] {
    { "fr", "Recent", "Récents" },
    { "fr", "recent", "récents" },
    { "fr", "Wait", "Attendre" },
    { "fr", "wait", "attendre" },
    { "fr", "Release", "Release" },
    { "fr", "Set the filter type to low-pass", "Passer le filtre en mode passe-bas" },
    { "fr", "Set the filter type to high-pass", "Passer le filtre en mode passe-haut" },
    { "fr", "Set the filter type to band-pass", "Passer le filtre en mode passe-bande" },
    { "fr", "Set the filter type to comb", "Passer le filtre en mode peigne" },
    { "fr", "Set the filter type to ", "Régler le type de filtre sur " },
    { "fr", "If you need more precision while dragging a knob, press ctrl (win) or cmd (osx)",
      "Pour plus de précision en tournant un potentiomètre, maintenir la touche ctrl (win) ou cmd (osx) enfoncée" },
    { "es", "Ratios", "Fracciones" },
    { "es", "ratios", "fracciones" },
    { "es", "target", "destino" },
    { "es", "Release", "Release" },
    { "pt", "Set the filter type to band-pass", "Definir o filtro como passa-faixa" },
    { "pt", "Set the filter type to comb", "Definir o filtro como pente" },
};

TEST (TranslationTables, KeepChosenWordings)
{
    for (const auto& wording : chosenWordings)
        EXPECT_EQ (TranslationTable (wording.language).getValue (wording.key), wording.value);
}
} // namespace
} // namespace cv::pluginCore
