#include "tools/render/RenderTestSupport.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <sys/stat.h>

namespace cv::render
{
namespace
{
using cv::test::areIdentical;

/** What somebody may have typed: an order, a layout and quotes of their own, and not every parameter. */
const juce::String handWrittenPreset = R"(<?xml version='1.0'?>
<!-- slapback -->
<Varlo version="1.0.0">
    <PARAMS>
        <PARAM id='mix'      value='100'/>
        <PARAM id='delay'    value='120'/>
        <PARAM id='feedback' value='35.5'/>
    </PARAMS>
</Varlo>
)";

const juce::StringArray sameByHand { "--set", "Mix=100", "--set", "Delay=120", "--set", "Feedback=35.5" };

class StateTest : public RenderTest
{
protected:
    StateTest() { preset.replaceWithText (handWrittenPreset); }

    juce::AudioBuffer<float> render (juce::StringArray arguments) const
    {
        arguments.addArray ({ "--bits", "32f", "--tail", "1" });
        return renderWell (arguments).samples;
    }

    void saveState (juce::StringArray arguments) const
    {
        arguments.addArray ({ "--save-state", state.getFullPathName() });
        const auto result = RenderProcess::runWell (arguments);
        EXPECT_EQ (result.output, juce::String());
    }

    juce::String stateText() const
    {
        juce::MemoryBlock chunk;
        state.loadFileAsData (chunk);
        return juce::String::fromUTF8 (chunk.begin() + 8, (int) chunk.getSize() - 9);
    }

    const juce::File preset = scratch.getFile ("preset.cvpreset");
    const juce::File state = scratch.getFile ("state.bin");
};

TEST_F (StateTest, PresetFromATextEditorSounds)
{
    const auto expected = render (sameByHand);
    ASSERT_FALSE (areIdentical (expected, render ({})));
    EXPECT_TRUE (areIdentical (expected, render ({ "--preset", preset.getFullPathName() })));
}

TEST_F (StateTest, PresetsValuesThatAreIgnoredAreTold)
{
    preset.replaceWithText ("<Varlo><PARAMS><PARAM id=\"Delay\" value=\"120\"/><PARAM id=\"mix\" value=\"12,5\"/>"
                            "<PARAM id=\"lowpass\" value=\"900\"/></PARAMS></Varlo>");
    const juce::StringArray render { input.getFullPathName(), "-o", output.getFullPathName(), "--preset",
                                     preset.getFullPathName() };
    const auto prefix = "varlo-render: warning: " + preset.getFullPathName() + ": ";

    // Out of the preset "Delay" gets into this state: the plug-in keeps what it doesn't know.
    const auto file = preset.getFullPathName();
    RenderProcess::run ({ "--preset", file, "--save-state", state.getFullPathName() });

    for (const auto& more : { juce::StringArray(), juce::StringArray { "--load-state", state.getFullPathName() } })
    {
        auto arguments = render;
        arguments.addArray (more);
        const auto result = RenderProcess::run (arguments);
        EXPECT_EQ (result.exitCode, 0);
        EXPECT_EQ (result.errors, prefix
                                      + "no parameter has the id \"Delay\"; there are degrade, delay, feedback, "
                                        "lowpass, mix, resonance\n"
                                      + prefix + "the value of mix is no number: \"12,5\"\n");
    }
}

TEST_F (StateTest, DocumentedPresetIsOne)
{
    const auto documentation = juce::File (VARLO_TEST_FOLDER).getSiblingFile ("docs/presets-and-state.md");
    const auto example = documentation.loadFileAsString()
                             .fromFirstOccurrenceOf ("```xml\n", false, false)
                             .upToFirstOccurrenceOf ("```", false, false);
    ASSERT_TRUE (example.contains ("</Varlo>"));

    preset.replaceWithText (example);
    saveState ({ "--preset", preset.getFullPathName() });
    EXPECT_EQ (state.getSize(), 337);
    EXPECT_TRUE (areIdentical (
        render ({ "--preset", preset.getFullPathName() }),
        render ({ "--set", "Delay=120", "--set", "Feedback=35", "--set", "Lowpass=3200", "--set", "Mix=40" })));
}

TEST_F (StateTest, SavedStateIsTheChunkThatProjectsHold)
{
    saveState ({ "--set", "Mix=25" });
    juce::MemoryBlock chunk;
    ASSERT_TRUE (state.loadFileAsData (chunk));

    EXPECT_EQ (std::string (chunk.begin(), 4), "VC2!");
    EXPECT_EQ ((size_t) juce::ByteOrder::littleEndianInt (chunk.begin() + 4) + 9, chunk.getSize());
    EXPECT_EQ (chunk[chunk.getSize() - 1], 0);
    EXPECT_TRUE (stateText().startsWith (
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?> <Varlo version=\"1.0.0\" lockedParams=\"\"><PARAMS>"))
        << stateText();
    EXPECT_TRUE (stateText().contains ("<PARAM id=\"mix\" value=\"25.0\"/>")) << stateText();
    EXPECT_TRUE (stateText().endsWith ("</PARAMS><Settings/></Varlo>")) << stateText();
}

TEST_F (StateTest, FreshProcessSoundsAsTheOneThatSaved)
{
    juce::StringArray arguments { "--set",      "Delay=33", "--set",        "Feedback=80",  "--set",
                                  "Degrade=20", "--set",    "Lowpass=2000", "--save-state", state.getFullPathName() };
    const auto saved = render (arguments);
    EXPECT_TRUE (areIdentical (saved, render ({ "--load-state", state.getFullPathName() })));

    // A state outlives being opened and saved again.
    const auto text = stateText();
    saveState ({ "--load-state", state.getFullPathName() });
    EXPECT_EQ (stateText(), text);
}

TEST_F (StateTest, SettingsComeAfterThePresetAndThePresetAfterTheState)
{
    saveState ({ "--set", "Mix=10", "--set", "Delay=77" });
    const auto both =
        render ({ "--set", "Delay=50", "--preset", preset.getFullPathName(), "--load-state", state.getFullPathName() });

    auto expected = sameByHand;
    expected.addArray ({ "--set", "Delay=50" });
    EXPECT_TRUE (areIdentical (both, render (expected)));
}

TEST_F (StateTest, StateIsSavedAtTheEnd)
{
    render ({ "--automate", "Mix=0:10,0.5:90", "--save-state", state.getFullPathName() });
    EXPECT_TRUE (stateText().contains ("<PARAM id=\"mix\" value=\"90.0\"/>")) << stateText();
}

TEST_F (StateTest, PresetBecomesAStateWithoutAnyAudio)
{
    saveState ({ "--preset", preset.getFullPathName() });
    EXPECT_TRUE (stateText().contains ("<PARAM id=\"feedback\" value=\"35.5\"/>")) << stateText();
    EXPECT_FALSE (output.exists());
}

TEST_F (StateTest, BypassIsNoPartOfTheState)
{
    saveState ({ "--set", "Bypass=On" });
    const auto text = stateText();
    saveState ({});
    EXPECT_EQ (stateText(), text);
}

TEST_F (StateTest, BadPresetsAreNamed)
{
    const auto expectPresetError = [this] (const juce::String& text, const juce::String& words)
    {
        preset.replaceWithText (text);
        expectRenderError ({ "--preset", preset.getFullPathName() }, words + preset.getFullPathName());
    };

    expectRenderError ({ "--preset", scratch.getFile ("none").getFullPathName() }, "no such file: ");
    expectRenderError ({ "--preset", scratch.getFolder().getFullPathName() }, "is a folder");
    expectPresetError ("", "not a preset: ");
    expectPresetError ("Delay=250", "not a preset: ");
    expectPresetError (handWrittenPreset.dropLastCharacters (10), "not a preset: ");
    expectPresetError (juce::String::repeatedString ("<a>", 1000000), "not a preset: ");
    expectPresetError ("<Varlo><?a?>b</Varlo>", "not a preset: ");

    preset.replaceWithText (handWrittenPreset.replace ("Varlo", "Other"));
    expectRenderError ({ "--preset", preset.getFullPathName() }, " is not for Varlo but for Other");
}

TEST_F (StateTest, BadStatesAreNamed)
{
    expectRenderError ({ "--load-state", scratch.getFile ("none").getFullPathName() }, "no such file: ");
    expectRenderError ({ "--load-state", preset.getFullPathName() }, "not a saved state: ");

    saveState ({});
    juce::MemoryBlock chunk;
    state.loadFileAsData (chunk);
    state.replaceWithData (chunk.getData(), chunk.getSize() / 2);
    expectRenderError ({ "--load-state", state.getFullPathName() }, "not a saved state: ");

    juce::AudioProcessor::copyXmlToBinary (juce::XmlElement ("Other"), chunk);
    state.replaceWithData (chunk.getData(), chunk.getSize());
    expectRenderError ({ "--load-state", state.getFullPathName() }, " is not for Varlo but for Other");
}

TEST_F (StateTest, PipesDevicesAndHugeFilesAreRefusedAtOnce)
{
    const auto pipe = scratch.getFile ("pipe");
    const auto zero = scratch.getFile ("zero");
    const auto huge = scratch.getFile ("huge");
    ASSERT_EQ (mkfifo (pipe.getFullPathName().toRawUTF8(), 0600), 0);
    ASSERT_TRUE (juce::File::createSymbolicLink (zero, "/dev/zero", false));
    {
        juce::FileOutputStream stream (huge);
        stream.setPosition (10'000'000'000);
        stream.writeByte (0);
    }

    for (const auto* const option : { "--preset", "--load-state" })
    {
        const auto isPreset = juce::String (option) == "--preset";
        const juce::String refusal = isPreset ? "not a preset: " : "not a saved state: ";

        for (const auto& name : { pipe.getFullPathName(), zero.getFullPathName(), juce::String ("/dev/zero") })
            expectRenderError ({ option, name }, refusal + name + " (a pipe or a device)");

        expectRenderError ({ option, huge.getFullPathName() },
                           refusal + huge.getFullPathName() + " (more than " + (isPreset ? "1" : "16") + " MiB)");
    }

    expectError ({ "--save-state", pipe.getFullPathName() }, "not a regular file: ");
    EXPECT_TRUE (pipe.exists());
}

TEST_F (StateTest, StateThatCannotBeWrittenIsAnError)
{
    expectError ({ "--save-state", scratch.getFile ("no/such/folder").getFullPathName() }, "no such folder: ");
    expectError ({ "--save-state", scratch.getFolder().getFullPathName() }, "is a folder");

    state.replaceWithText ("old");
    RenderProcess::Options options;
    options.maxFileSize = 100;
    EXPECT_EQ (RenderProcess::run ({ "--save-state", state.getFullPathName() }, options).exitCode, 1);
    EXPECT_EQ (state.loadFileAsString(), "old");
}

TEST_F (StateTest, AudioFileAloneStillNeedsAnOutput)
{
    expectError ({ "--save-state", state.getFullPathName(), input.getFullPathName() }, "no output file", 2);
    expectError ({ "--save-state", state.getFullPathName(), "-o", output.getFullPathName() }, "no input file", 2);
}
} // namespace
} // namespace cv::render
