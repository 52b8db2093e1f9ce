#include "varlo/AudioPluginAudioProcessor.h"

#include "support/KeptTranslations.h"
#include "support/SystemLanguage.h"

#include <gtest/gtest.h>

namespace cv::varlo
{
namespace
{
using cv::test::SystemLanguage;

class LanguageTest : public testing::Test
{
protected:
    LanguageTest() { juce::LocalisedStrings::setCurrentMappings (nullptr); }

    const cv::test::KeptTranslations keptTranslations;
};

TEST_F (LanguageTest, ProcessorSpeaksTheSystemsLanguage)
{
    for (const auto& [language, region, close] : { std::tuple { "fr", "CA", "fermer" },
                                                   { "es", "MX", "cerrar" },
                                                   { "pt", "BR", "fechar" },
                                                   { "pt", "PT", "fechar" },
                                                   { "fre", "", "fermer" },
                                                   { "spa", "", "cerrar" },
                                                   { "por", "", "fechar" },
                                                   { "eng", "", "close" } })
    {
        const SystemLanguage systemLanguage (language, region);
        const AudioPluginAudioProcessor processor;
        EXPECT_EQ (juce::translate ("close"), close) << language;
    }
}

TEST_F (LanguageTest, ProcessorSpeaksEnglishWhereItHasNoTable)
{
    const SystemLanguage systemLanguage ("xx", "CH");
    const AudioPluginAudioProcessor processor;

    ASSERT_NE (juce::LocalisedStrings::getCurrentMappings(), nullptr);
    EXPECT_EQ (juce::translate ("close"), "close");
    EXPECT_EQ (juce::translate ("Delete Preset"), "Delete");
}

TEST_F (LanguageTest, InstancesShareOneTable)
{
    const SystemLanguage systemLanguage ("fr");
    auto first = std::make_unique<AudioPluginAudioProcessor>();
    const auto second = std::make_unique<AudioPluginAudioProcessor>();
    EXPECT_EQ (juce::translate ("close"), "fermer");

    const auto* const table = juce::LocalisedStrings::getCurrentMappings();
    first.reset();
    EXPECT_EQ (juce::LocalisedStrings::getCurrentMappings(), table);
    EXPECT_EQ (juce::translate ("close"), "fermer");
}

TEST_F (LanguageTest, LaterInstancesChooseAgain)
{
    auto systemLanguage = std::make_unique<SystemLanguage> ("fr");
    const AudioPluginAudioProcessor first;
    ASSERT_EQ (juce::translate ("close"), "fermer");

    systemLanguage.reset();
    const AudioPluginAudioProcessor second;
    EXPECT_EQ (juce::translate ("close"), "close");
    EXPECT_EQ (juce::translate ("Delete Preset"), "Delete");
}

TEST_F (LanguageTest, TableStaysWhenTheLastInstanceIsGone)
{
    {
        const SystemLanguage systemLanguage ("pt", "BR");
        const AudioPluginAudioProcessor processor;
    }

    EXPECT_EQ (juce::translate ("close"), "fechar");
}
} // namespace
} // namespace cv::varlo
