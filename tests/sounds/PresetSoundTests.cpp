#include "sounds/PresetSound.h"

#include "sounds/PresetDocument.h"
#include "sounds/SoundMeasures.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
constexpr auto highestPeakDecibels = -1.0;
constexpr auto largestLoudnessChange = 6.0;

/** Half of the last digit, and some room for another processor's arithmetic. */
constexpr auto documentedTolerance = 0.1;

/** Longer tails are measured for the documentation alone. */
constexpr auto longestTestedTailSeconds = 15.0;

/** The presets' paths in the tree, which test runners can print. */
std::vector<std::string> findPaths()
{
    std::vector<std::string> paths;

    for (const auto& preset : findPresets())
        paths.push_back (preset.getRelativePathFrom (juce::File (VARLO_RESOURCES)).toStdString());

    return paths;
}

class PresetSoundTest : public testing::TestWithParam<std::string>
{
protected:
    const test::TemporaryHome home;
    const juce::File preset = juce::File (VARLO_RESOURCES).getChildFile (juce::String (GetParam()));
    const juce::String name = preset.getFileNameWithoutExtension();
    const PresetDocument document { PresetDocument::getFile() };
};

TEST_P (PresetSoundTest, KeepsTheLevelAndDoesWhatIsDocumented)
{
    const auto documented = document.getFigures (name);
    const auto numRecordings = (int) recordings.size();
    ASSERT_EQ (documented.size(), 2 * numRecordings + 1);
    PresetSound sound (preset);

    for (auto i = 0; i < numRecordings; ++i)
    {
        const auto recording = recordings[(size_t) i];
        SCOPED_TRACE (getName (recording));
        const auto change = sound.play (recording);
        EXPECT_LE (change.peakDecibels, highestPeakDecibels);
        EXPECT_LE (std::abs (change.loudness), largestLoudnessChange);
        EXPECT_NEAR (change.peakDecibels, documented[i].getDoubleValue(), documentedTolerance);
        EXPECT_NEAR (change.loudness, documented[numRecordings + i].getDoubleValue(), documentedTolerance);

        const auto tail = documented[2 * numRecordings].getDoubleValue();

        if (recording == Recording::drums && tail < longestTestedTailSeconds)
        {
            EXPECT_NEAR (sound.measureTail(), tail, documentedTolerance);
        }
    }
}

TEST_P (PresetSoundTest, HasTheDocumentedValues)
{
    const juce::StringArray identifiers { "mix", "degrade", "delay", "feedback", "lowpass", "resonance" };
    const auto documented = document.getValues (name);
    const auto xml = juce::parseXML (preset);
    ASSERT_EQ (documented.size(), identifiers.size());
    ASSERT_NE (xml, nullptr);

    for (auto i = 0; i < identifiers.size(); ++i)
    {
        SCOPED_TRACE (identifiers[i]);
        const auto* const parameters = xml->getChildByName ("PARAMS");
        ASSERT_NE (parameters, nullptr);
        const auto* const parameter = parameters->getChildByAttribute ("id", identifiers[i]);
        ASSERT_NE (parameter, nullptr);

        // Whole and decimal numbers go through a knob's range, which moves their last digits.
        const auto value = documented[i].getDoubleValue();
        EXPECT_NEAR (parameter->getDoubleAttribute ("value"), value, 1.0e-6 * value);
    }
}

INSTANTIATE_TEST_SUITE_P (Presets,
                          PresetSoundTest,
                          testing::ValuesIn (findPaths()),
                          [] (const testing::TestParamInfo<std::string>& path)
                          {
                              return juce::File ("/" + juce::String (path.param))
                                  .getFileNameWithoutExtension()
                                  .removeCharacters (" -")
                                  .toStdString();
                          });

TEST (PresetDocumentTest, TellsOfThePresetsThatThereAre)
{
    auto names = PresetDocument (PresetDocument::getFile()).getNames();
    juce::StringArray present;

    for (const auto& preset : findPresets())
        present.add (preset.getFileNameWithoutExtension());

    names.sort (false);
    present.sort (false);
    EXPECT_EQ (names.joinIntoString (", "), present.joinIntoString (", "));
}

/** Tones whose loudness is known: the meter's reference is a sine of 1 kHz in both channels. */
TEST (SoundMeasuresTest, SineHasItsPeakAndItsLoudness)
{
    juce::AudioBuffer<float> sine (2, 3 * recordingRateHz);

    for (auto i = 0; i < sine.getNumSamples(); ++i)
        for (auto channel = 0; channel < 2; ++channel)
            sine.setSample (channel, i,
                            0.1f
                                * std::sin (juce::MathConstants<float>::twoPi * 1000.0f * (float) i / recordingRateHz));

    EXPECT_NEAR (getPeakDecibels (sine), -20.0, 0.01);
    EXPECT_NEAR (getLoudness (sine, recordingRateHz), -20.0, 0.1);
}
} // namespace
} // namespace cv::varlo
