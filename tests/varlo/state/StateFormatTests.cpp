#include "support/PresetListenerLog.h"
#include "support/ProcessorHarness.h"
#include "support/Signals.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using cv::test::areIdentical;
using cv::test::makeNoise;
using cv::test::PresetListenerLog;
using cv::test::ProcessorHarness;
using cv::test::TemporaryHome;

const std::string defaultParameters =
    R"(<PARAMS><PARAM id="degrade" value="0.0"/><PARAM id="delay" value="999.9999389648438"/>)"
    R"(<PARAM id="feedback" value="50.0"/><PARAM id="lowpass" value="4999.99951171875"/>)"
    R"(<PARAM id="mix" value="50.0"/><PARAM id="resonance" value="0.0"/></PARAMS>)";

std::string saveProject (AudioPluginAudioProcessor& processor)
{
    juce::MemoryBlock chunk;
    processor.getStateInformation (chunk);
    return { chunk.begin(), chunk.end() };
}

void openProject (AudioPluginAudioProcessor& processor, const std::string& chunk)
{
    processor.setStateInformation (chunk.data(), (int) chunk.size());
}

/** What the layout says a chunk is, for a text below 64 KB. */
std::string makeChunk (const std::string& text)
{
    const auto length = text.size();
    return "VC2!" + std::string { (char) (length & 0xff), (char) (length >> 8), 0, 0 } + text + '\0';
}

class StateFormatTest : public testing::Test
{
protected:
    const TemporaryHome home;
    ProcessorHarness harness;
};

TEST_F (StateFormatTest, ChunkOfAFreshInstance)
{
    EXPECT_EQ (saveProject (harness.processor),
               makeChunk (R"(<?xml version="1.0" encoding="UTF-8"?> <Varlo version="1.0.0" lockedParams="">)"
                          + defaultParameters + "<Settings/></Varlo>"));
}

TEST_F (StateFormatTest, ChunkWithAnEditorSizeAndAPreset)
{
    harness.processor.setEditorSize (1050, 578);
    harness.processor.getPresetsManager().setCurrentPresetFile (
        home.getFile (".local/share/Corvane/Varlo/presets/Live/Big.cvpreset"));
    harness.set ("mix", 25.0f);

    auto parameters = defaultParameters;
    parameters.replace (parameters.find ("\"mix\" value=\"50.0\""), 18, "\"mix\" value=\"25.0\"");

    EXPECT_EQ (saveProject (harness.processor),
               makeChunk (R"(<?xml version="1.0" encoding="UTF-8"?> <Varlo version="1.0.0" pluginEditorWidth="1050")"
                          R"( pluginEditorHeight="578" lockedParams="">)"
                          + parameters
                          + R"(<Settings/><lastPreset root="USER" path="Live/Big.cvpreset" dirty="1"/></Varlo>)"));
}

TEST_F (StateFormatTest, ChunkThatLocksMixAndDelay)
{
    auto text = saveProject (harness.processor).substr (8);
    text.replace (text.find ("lockedParams=\"\""), 15, "lockedParams=\"mix;delay\"");
    text.replace (text.find ("\"50.0\"/>"), 8, "\"10.0\"/>");
    const auto chunk = makeChunk (text);
    openProject (harness.processor, chunk);
    EXPECT_EQ (harness.parameter ("feedback").get(), 10.0f);

    ProcessorHarness fresh;
    fresh.set ("mix", 90.0f);
    fresh.set ("feedback", 90.0f);
    openProject (fresh.processor, chunk);
    EXPECT_EQ (fresh.parameter ("mix").get(), 50.0f);
    EXPECT_EQ (fresh.parameter ("feedback").get(), 10.0f);

    fresh.set ("mix", 80.0f);
    fresh.set ("feedback", 80.0f);
    openProject (fresh.processor, chunk);
    EXPECT_EQ (fresh.parameter ("mix").get(), 80.0f);
    EXPECT_EQ (fresh.parameter ("feedback").get(), 10.0f);
}

TEST_F (StateFormatTest, ChunkOfNineBytesWithoutALengthRestoresNothing)
{
    harness.set ("mix", 25.0f);
    const auto before = saveProject (harness.processor);
    openProject (harness.processor, std::string ("VC2!\0\0\0\0\0", 9));
    EXPECT_EQ (saveProject (harness.processor), before);
}

TEST_F (StateFormatTest, SavedProjectsAreSavedTheSameAgain)
{
    juce::Random random (3);

    for (auto i = 0; i < 50; ++i)
    {
        for (auto* parameter : harness.processor.getParameters())
            parameter->setValueNotifyingHost (random.nextFloat());

        // A first trip through text and range may move a value by some units in its last place.
        ProcessorHarness second;
        openProject (second.processor, saveProject (harness.processor));
        ProcessorHarness third;
        openProject (third.processor, saveProject (second.processor));

        EXPECT_EQ (saveProject (third.processor), saveProject (second.processor));

        for (const auto* id : { "mix", "degrade", "delay", "feedback", "lowpass", "resonance" })
            EXPECT_NEAR (second.parameter (id).get() / harness.parameter (id).get(), 1.0f, 1.0e-6f) << id;
    }
}

TEST_F (StateFormatTest, RestoredProjectSoundsAsTheSavedOne)
{
    const auto input = makeNoise (2, 44100, 0.5f);
    harness.set ("delay", 80.0f);
    harness.set ("feedback", 70.0f);
    harness.set ("degrade", 30.0f);
    harness.prepare();

    ProcessorHarness restored;
    openProject (restored.processor, saveProject (harness.processor));
    restored.prepare();
    EXPECT_TRUE (areIdentical (restored.render (input), harness.render (input)));
}

TEST_F (StateFormatTest, EchoesGoOnThroughARestore)
{
    harness.set ("delay", 500.0f);
    harness.prepare();
    harness.render (makeNoise (2, 22050, 0.5f));
    openProject (harness.processor, saveProject (harness.processor));

    EXPECT_GT (harness.render (cv::test::makeSilence (2, 512)).getMagnitude (0, 512), 0.05f);
}

TEST_F (StateFormatTest, PresetFolders)
{
    const auto& locations = harness.processor.getPresetsManager().getLocations();

#if JUCE_LINUX
    EXPECT_EQ (locations.factoryFolder.getFullPathName(), "/usr/share/Corvane/Varlo/presets");
    EXPECT_EQ (locations.designerFolder.getFullPathName(), "/usr/share/Corvane/Varlo/DesignersPresets");
    EXPECT_EQ (locations.userFolder, home.getFile (".local/share/Corvane/Varlo/presets"));
#endif

    EXPECT_TRUE (locations.userFolder.isDirectory());
    EXPECT_EQ (locations.initPresetFile, locations.factoryFolder.getChildFile ("Init.cvpreset"));
    EXPECT_EQ (locations.presetExtension, ".cvpreset");
}

TEST_F (StateFormatTest, PresetFile)
{
    const auto file = home.getFile ("a.cvpreset");
    harness.processor.getPresetsManager().savePreset (file, false);

    EXPECT_TRUE (file.loadFileAsString().startsWith ("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n\r\n"
                                                     "<Varlo version=\"1.0.0\">\r\n  <PARAMS>\r\n"
                                                     "    <PARAM id=\"degrade\" value=\"0.0\"/>\r\n"));
    EXPECT_FALSE (file.loadFileAsString().contains ("Data"));
}

TEST_F (StateFormatTest, SettingsFile)
{
    EXPECT_EQ (harness.processor.getGlobalSettings().getInnerData ({})->file.getFile(),
               home.getFile ("Corvane/Varlo/Varlo.settings"));
}
} // namespace
} // namespace cv::varlo
