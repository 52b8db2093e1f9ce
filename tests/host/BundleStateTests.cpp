#include "support/RenderProcess.h"

#include <gmock/gmock.h>
#include <juce_audio_processors/juce_audio_processors.h>

namespace cv::varlo
{
namespace
{
using test::RenderProcess;
using test::ScratchFolder;

/** The bundle's state, as a host keeps it in its projects. */
class BundleState : public ::testing::Test
{
protected:
    /** What `state` holds once the plug-in has opened it, done as the arguments say, and been asked for its state. */
    juce::String openAndSave (juce::StringArray arguments) const
    {
        const auto saved = scratch.getFile ("saved.bin");
        arguments.addArray ({ "--load-state", state.getFullPathName(), "--save-state", saved.getFullPathName() });
        RenderProcess::runWell (arguments);

        juce::MemoryBlock chunk;
        saved.loadFileAsData (chunk);
        const auto xml = juce::AudioProcessor::getXmlFromBinary (chunk.getData(), (int) chunk.getSize());
        return xml != nullptr ? xml->toString (juce::XmlElement::TextFormat().singleLine()) : juce::String();
    }

    void writeState (const juce::String& text) const
    {
        juce::MemoryBlock chunk;
        juce::AudioProcessor::copyXmlToBinary (*juce::parseXML (text), chunk);
        state.replaceWithData (chunk.getData(), chunk.getSize());
    }

    const ScratchFolder scratch;
    const juce::File state = scratch.getFile ("state.bin");
};

TEST_F (BundleState, MarksThePresetOnceAParameterMoves)
{
    const juce::String lastPreset ("<lastPreset root=\"USER\" path=\"a.cvpreset\" dirty=\"");
    writeState ("<Varlo>" + lastPreset + "0\"/></Varlo>");

    EXPECT_TRUE (openAndSave ({}).contains (lastPreset + "0\"/>")) << openAndSave ({});

    const auto moved = openAndSave ({ "--set", "Mix=25" });
    EXPECT_TRUE (moved.contains ("<PARAM id=\"mix\" value=\"25.0\"/>")) << moved;
    EXPECT_TRUE (moved.contains (lastPreset + "1\"/>")) << moved;
}
} // namespace
} // namespace cv::varlo
