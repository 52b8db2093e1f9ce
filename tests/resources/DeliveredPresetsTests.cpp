#include "support/ProcessorHarness.h"
#include "support/ScratchFolder.h"
#include "support/TemporaryHome.h"
#include "varlo/parameters/Parameters.h"

#include <gmock/gmock.h>

#include <vector>

namespace cv::varlo
{
namespace
{
using test::ProcessorHarness;
using test::ScratchFolder;
using test::TemporaryHome;

const juce::StringArray identifiers { parameterIds::mix,      parameterIds::degrade, parameterIds::delay,
                                      parameterIds::feedback, parameterIds::lowpass, parameterIds::resonance };

juce::File getBank (const juce::String& name)
{
    return juce::File (VARLO_RESOURCES).getChildFile ("presets").getChildFile (name);
}

juce::Array<juce::File> findFiles (const juce::File& folder)
{
    return folder.findChildFiles (juce::File::findFiles, true);
}

juce::Array<juce::File> findAllPresets()
{
    auto files = findFiles (getBank ("factory"));
    files.addArray (findFiles (getBank ("designers")));
    return files;
}

/** The text of a parameter's value in the file; empty if there is none. */
juce::String readValue (const juce::XmlElement& preset, const juce::String& parameterId)
{
    const auto* const parameters = preset.getChildByName ("PARAMS");
    const auto* const parameter = parameters != nullptr ? parameters->getChildByAttribute ("id", parameterId) : nullptr;
    return parameter != nullptr ? parameter->getStringAttribute ("value") : juce::String();
}

/** The presets that come with the plug-in. */
class DeliveredPresets : public testing::Test
{
protected:
    /** The file's text as this version of the plug-in would have written it. */
    juce::String withPresentVersion (const juce::File& preset) const
    {
        const auto xml = juce::parseXML (preset);
        const auto root = [] (const juce::String& version) { return "<Varlo version=\"" + version + "\">"; };
        return preset.loadFileAsString().replace (root (xml != nullptr ? xml->getStringAttribute ("version") : ""),
                                                  root (harness.processor.getVersionString()));
    }

    const TemporaryHome home;
    ProcessorHarness harness;
};

TEST_F (DeliveredPresets, FactoryHasItsFoldersAndTheNeutralSound)
{
    const auto factory = getBank ("factory");
    std::map<std::string, int> numPresets;

    for (const auto& file : findFiles (factory))
        ++numPresets[file.getParentDirectory().getRelativePathFrom (factory).toStdString()];

    EXPECT_THAT (numPresets,
                 testing::ElementsAre (testing::Pair (".", 1), testing::Pair ("Ambient", 4), testing::Pair ("Dub", 4),
                                       testing::Pair ("Lo-fi", 4), testing::Pair ("Rhythmic", 5),
                                       testing::Pair ("Slap", 4), testing::Pair ("Special", 3)));
    EXPECT_TRUE (factory.getChildFile ("Init.cvpreset").existsAsFile());
    EXPECT_EQ (findFiles (getBank ("designers")).size(), 8);
}

TEST_F (DeliveredPresets, EveryNameIsThereOnce)
{
    juce::StringArray names;

    for (const auto& file : findAllPresets())
    {
        EXPECT_EQ (file.getFileExtension(), ".cvpreset");
        EXPECT_TRUE (names.addIfNotAlreadyThere (file.getFileNameWithoutExtension(), true)) << file.getFileName();
    }
}

TEST_F (DeliveredPresets, EveryValueIsInItsRangeAndArrives)
{
    for (const auto& file : findAllPresets())
    {
        SCOPED_TRACE (file.getFileName());
        const auto xml = juce::parseXML (file);
        ASSERT_NE (xml, nullptr);
        harness.processor.getPresetsManager().loadPreset (file);

        for (const auto& id : identifiers)
        {
            const auto& parameter = harness.parameter (id);
            const auto& range = parameter.getNormalisableRange();
            const auto value = readValue (*xml, id).getFloatValue();
            EXPECT_TRUE (readValue (*xml, id).isNotEmpty()) << id;
            EXPECT_GE (value, range.start) << id;
            EXPECT_LE (value, range.end) << id;
            EXPECT_EQ (parameter.get(), value) << id;
        }
    }
}

TEST_F (DeliveredPresets, EveryFileIsByteForByteWhatThePluginWrites)
{
    const ScratchFolder scratch;
    const auto written = scratch.getFile ("written.cvpreset");

    for (const auto& file : findAllPresets())
    {
        SCOPED_TRACE (file.getFileName());
        const auto xml = juce::parseXML (file);
        ASSERT_NE (xml, nullptr);
        ProcessorHarness fresh;

        for (const auto& id : identifiers)
            fresh.set (id, readValue (*xml, id).getFloatValue());

        fresh.processor.getPresetsManager().savePreset (written, false);
        EXPECT_EQ (written.loadFileAsString(), withPresentVersion (file));
    }
}

TEST_F (DeliveredPresets, TheNeutralSoundIsWhatANewInstanceSaves)
{
    const ScratchFolder scratch;
    const auto written = scratch.getFile ("written.cvpreset");
    harness.processor.getPresetsManager().savePreset (written, false);
    EXPECT_EQ (written.loadFileAsString(), withPresentVersion (getBank ("factory").getChildFile ("Init.cvpreset")));
}
} // namespace
} // namespace cv::varlo
