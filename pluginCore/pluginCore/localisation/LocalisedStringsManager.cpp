#include "pluginCore/localisation/LocalisedStringsManager.h"

#include <PluginCoreResources.h>

#include <algorithm>
#include <array>
#include <clocale>
#include <string>

namespace cv::pluginCore
{
namespace
{
const std::array languages {
    Language { .code = "en",
               .threeLetterCode = "eng",
               .table = resources::en_txt,
               .tableBytes = resources::en_txtSize,
               .help = resources::help_en_txt,
               .helpBytes = resources::help_en_txtSize },
    Language { .code = "fr",
               .threeLetterCode = "fre",
               .table = resources::fr_txt,
               .tableBytes = resources::fr_txtSize,
               .help = resources::help_fr_txt,
               .helpBytes = resources::help_fr_txtSize },
    Language { .code = "es",
               .threeLetterCode = "spa",
               .table = resources::es_txt,
               .tableBytes = resources::es_txtSize,
               .help = resources::help_es_txt,
               .helpBytes = resources::help_es_txtSize },
    Language { .code = "pt",
               .threeLetterCode = "por",
               .table = resources::pt_txt,
               .tableBytes = resources::pt_txtSize,
               .help = resources::help_pt_txt,
               .helpBytes = resources::help_pt_txtSize },
};
} // namespace

std::span<const Language> LocalisedStringsManager::getLanguages() noexcept
{
    return languages;
}

juce::String LocalisedStringsManager::languageCodeFor (const juce::String& displayLanguage)
{
    const auto language = displayLanguage.upToFirstOccurrenceOf ("-", false, false);

    const auto found =
        std::find_if (languages.begin(), languages.end(),
                      [&] (const auto& known) { return language == known.code || language == known.threeLetterCode; });

    return found != languages.end() ? found->code : languages.front().code;
}

juce::String LocalisedStringsManager::systemLanguageCode()
{
    // On Linux the question leaves the whole process in the user's locale, where the host may come to
    // read and write numbers with a decimal comma.
    const std::string hostLocale = std::setlocale (LC_ALL, nullptr);
    const auto displayLanguage = juce::SystemStats::getDisplayLanguage();
    std::setlocale (LC_ALL, hostLocale.c_str());

    return languageCodeFor (displayLanguage);
}

bool LocalisedStringsManager::setLanguage (const juce::String& code)
{
    const auto language =
        std::find_if (languages.begin(), languages.end(), [&] (const auto& known) { return code == known.code; });
    const auto isKnown = language != languages.end();

    if (isKnown)
    {
        const auto text = juce::String::createStringFromData (language->table, language->tableBytes);
        languageCode = code;

        const auto help = juce::String::createStringFromData (language->help, language->helpBytes);
        auto anyCase = std::make_unique<juce::LocalisedStrings> (text, true);
        anyCase->setFallback (new juce::LocalisedStrings (help, false));

        auto mappings = std::make_unique<juce::LocalisedStrings> (text, false);
        mappings->setFallback (anyCase.release());
        juce::LocalisedStrings::setCurrentMappings (mappings.release());
    }

    languageChanged (code);
    return isKnown;
}

void LocalisedStringsManager::languageChanged (const juce::String&) {}
} // namespace cv::pluginCore
