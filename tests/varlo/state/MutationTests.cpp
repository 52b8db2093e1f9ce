#include "pluginCore/state/StateChunk.h"
#include "pluginCore/state/XmlText.h"
#include "support/ProcessorHarness.h"
#include "support/Signals.h"
#include "support/TemporaryHome.h"
#include "support/TextMutator.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::ProcessorHarness;
using cv::test::TemporaryHome;
using cv::test::TextMutator;

constexpr auto numMutants = 10000;

/** A project with something in each of its parts. */
const std::string project =
    R"(<?xml version="1.0" encoding="UTF-8"?> <Varlo version="1.0.0" pluginEditorWidth="1050" pluginEditorHeight="578")"
    R"( lockedParams="mix;delay"><PARAMS><PARAM id="degrade" value="12.5"/><PARAM id="delay" value="250.0"/>)"
    R"(<PARAM id="feedback" value="60.0"/><PARAM id="lowpass" value="3000.0"/><PARAM id="mix" value="40.0"/>)"
    R"(<PARAM id="resonance" value="20.0"/></PARAMS><Settings a="1"><b c="2"/></Settings><Data d="3"><e/><e f="4"/></Data>)"
    R"(<lastPreset root="USER" path="Live/Big.cvpreset" dirty="1"/></Varlo> )";

/** All that a state call may change. */
struct Everything
{
    explicit Everything (AudioPluginAudioProcessor& processor)
        : presetFile (processor.getPresetsManager().getCurrentPresetFile())
        , dirty (processor.getPresetsManager().isDirty())
    {
        processor.getStateInformation (chunk);
    }

    bool operator== (const Everything& other) const
    {
        return chunk == other.chunk && presetFile == other.presetFile && dirty == other.dirty;
    }

    juce::MemoryBlock chunk;
    juce::File presetFile;
    bool dirty;
};

class MutationTest : public testing::Test
{
protected:
    MutationTest() { harness.prepare(); }

    void expectAllParametersInRange()
    {
        for (const auto* id : { "mix", "degrade", "delay", "feedback", "lowpass", "resonance" })
        {
            const auto& parameter = harness.parameter (id);
            ASSERT_GE (parameter.get(), parameter.range.start) << id;
            ASSERT_LE (parameter.get(), parameter.range.end) << id;
        }
    }

    /** What is saved now holds each parameter once, and a number within its range. */
    void expectSoundValuesInTheNextChunk()
    {
        juce::MemoryBlock chunk;
        harness.processor.getStateInformation (chunk);
        const auto xml = pluginCore::parseStateChunk (chunk.getData(), (int) chunk.getSize());
        ASSERT_NE (xml, nullptr);

        for (const auto* id : { "mix", "degrade", "delay", "feedback", "lowpass", "resonance" })
        {
            auto numFound = 0;

            for (const auto* child : xml->getChildByName ("PARAMS")->getChildIterator())
                if (child->getStringAttribute ("id") == id)
                {
                    ++numFound;
                    const auto text = child->getStringAttribute ("value").toStdString();
                    char* end = nullptr;
                    const auto value = std::strtod (text.c_str(), &end);
                    const auto& range = harness.parameter (id).range;
                    ASSERT_TRUE (! text.empty() && *end == 0) << id << '=' << text;
                    ASSERT_GE (value, range.start) << id;
                    ASSERT_LE (value, range.end) << id;
                }

            ASSERT_EQ (numFound, 1) << id;
        }
    }

    void expectSaneSound()
    {
        const auto output = harness.render (cv::test::makeNoise (2, 64, 1.0f));
        ASSERT_LE (output.getMagnitude (0, 64), 4.0f);
    }

    const TemporaryHome home;
    ProcessorHarness harness;
};

/** A chunk around the text; now and then with another length than the text's, or no chunk at all. */
std::string makeChunk (const std::string& text, juce::Random& random)
{
    const auto isLengthRight = random.nextInt (4) != 0;
    const auto length = isLengthRight ? (juce::uint32) text.size() : (juce::uint32) random.nextInt();
    const auto stored = juce::ByteOrder::swapIfBigEndian (length);
    const std::string magic = random.nextInt (20) != 0 ? "VC2!" : "VC3!";

    return magic + std::string (reinterpret_cast<const char*> (&stored), 4) + text + '\0';
}

TEST_F (MutationTest, ProjectsFromAnywhereDoNoHarm)
{
    TextMutator mutator (1);
    juce::Random random (2);
    auto numApplied = 0;

    for (auto i = 0; i < numMutants; ++i)
    {
        const auto chunk = makeChunk (mutator.mutate (project), random);
        const std::vector<char> exactCopy (chunk.begin(), chunk.end());
        const Everything before (harness.processor);
        const auto parses = pluginCore::parseStateChunk (exactCopy.data(), (int) exactCopy.size()) != nullptr;
        harness.processor.setStateInformation (exactCopy.data(), (int) exactCopy.size());

        ASSERT_TRUE (parses || Everything (harness.processor) == before) << i;
        numApplied += parses ? 1 : 0;
        ASSERT_NO_FATAL_FAILURE (expectAllParametersInRange()) << i;
        ASSERT_NO_FATAL_FAILURE (expectSoundValuesInTheNextChunk()) << i;
        ASSERT_NO_FATAL_FAILURE (expectSaneSound()) << i;
    }

    EXPECT_GT (numApplied, numMutants / 10);
    EXPECT_LT (numApplied, numMutants * 9 / 10);
}

TEST_F (MutationTest, PresetsFromAnywhereDoNoHarm)
{
    TextMutator mutator (3);
    auto& presets = harness.processor.getPresetsManager();
    auto numApplied = 0;

    for (auto i = 0; i < numMutants; ++i)
    {
        const auto file = home.getFile ("preset" + juce::String (i % 2) + ".cvpreset");
        const auto text = mutator.mutate (project);
        file.replaceWithData (text.data(), text.size());

        const Everything before (harness.processor);
        const auto parses = pluginCore::parseXmlFile (file) != nullptr;
        presets.loadPreset (file);

        ASSERT_TRUE (parses ? presets.getCurrentPresetFile() == file : Everything (harness.processor) == before) << i;
        numApplied += parses ? 1 : 0;
        ASSERT_NO_FATAL_FAILURE (expectAllParametersInRange()) << i;
        ASSERT_NO_FATAL_FAILURE (expectSoundValuesInTheNextChunk()) << i;
        ASSERT_NO_FATAL_FAILURE (expectSaneSound()) << i;
    }

    EXPECT_GT (numApplied, numMutants / 10);
    EXPECT_LT (numApplied, numMutants * 9 / 10);
}
} // namespace
} // namespace cv::varlo
