#include "localisation/LocalisedStringsManager.h"

#include <PluginCoreResources.h>

#include <clocale>
#include <string>

namespace cv::pluginCore
{
namespace
{
/** The text of a table, empty for a code that has none. */
juce::String readTable (const juce::String& code)
{
    using juce::String;

    if (code == "en")
        return String::createStringFromData (resources::en_txt, resources::en_txtSize);

    if (code == "fr")
        return String::createStringFromData (resources::fr_txt, resources::fr_txtSize);

    if (code == "es")
        return String::createStringFromData (resources::es_txt, resources::es_txtSize);

    if (code == "pt")
        return String::createStringFromData (resources::pt_txt, resources::pt_txtSize);

    return {};
}
} // namespace

juce::String LocalisedStringsManager::languageCodeFor (const juce::String& displayLanguage)
{
    const auto language = displayLanguage.upToFirstOccurrenceOf ("-", false, false);

    if (language == "fr" || language == "fre")
        return "fr";

    if (language == "es" || language == "spa")
        return "es";

    if (language == "pt" || language == "por")
        return "pt";

    return "en";
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
    const auto text = readTable (code);
    const auto isKnown = text.isNotEmpty();

    if (isKnown)
    {
        languageCode = code;

        auto mappings = std::make_unique<juce::LocalisedStrings> (text, false);
        mappings->setFallback (new juce::LocalisedStrings (text, true));
        juce::LocalisedStrings::setCurrentMappings (mappings.release());
    }

    languageChanged (code);
    return isKnown;
}

void LocalisedStringsManager::languageChanged (const juce::String&) {}
} // namespace cv::pluginCore
