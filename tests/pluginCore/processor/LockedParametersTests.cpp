#include "support/PresetSandbox.h"
#include "support/TestProduct.h"

#include <gmock/gmock.h>

namespace cv::pluginCore
{
namespace
{
/** Counts the gestures of a parameter and notes its values. */
class GestureLog final : public juce::AudioProcessorParameter::Listener
{
public:
    explicit GestureLog (juce::AudioProcessorParameter& parameterToWatch) : parameter (parameterToWatch)
    {
        parameter.addListener (this);
    }

    ~GestureLog() override { parameter.removeListener (this); }

    juce::StringArray events;

private:
    void parameterValueChanged (int, float value) override { events.add (juce::String (value, 2)); }

    void parameterGestureChanged (int, bool starts) override { events.add (starts ? "begin" : "end"); }

    juce::AudioProcessorParameter& parameter;
};

class LockedParametersTest : public testing::Test
{
protected:
    LockedParametersTest() { product.initialise(); }

    /** Applies a state as a preset does. */
    void restore (const juce::String& text) { product.restoreStateXml (*juce::parseXML (text), false); }

    /** Opens a project that holds just this text. */
    void openProject (const juce::String& text)
    {
        juce::MemoryBlock chunk;
        juce::AudioProcessor::copyXmlToBinary (*juce::parseXML (text), chunk);
        product.setStateInformation (chunk.getData(), (int) chunk.getSize());
    }

    juce::String saveProject()
    {
        juce::MemoryBlock chunk;
        product.getStateInformation (chunk);
        return juce::AudioProcessor::getXmlFromBinary (chunk.getData(), (int) chunk.getSize())->toString();
    }

    const test::PresetSandbox sandbox;
    test::TestProduct product { sandbox.getLocations() };
};

TEST_F (LockedParametersTest, KeepTheirValue)
{
    product.set ("level", 10.0f);
    product.set ("time", 20.0f);
    openProject ("<TestProduct lockedParams='nobody;level;;level'/>");
    GestureLog level (*product.getValueTreeState().getParameter ("level"));
    GestureLog time (*product.getValueTreeState().getParameter ("time"));
    restore (
        "<TestProduct><PARAMS><PARAM id='level' value='30'/><PARAM id='time' value='1000'/></PARAMS></TestProduct>");

    EXPECT_EQ (product.get ("level"), 10.0f);
    EXPECT_EQ (product.get ("time"), 1000.0f);
    EXPECT_EQ (level.events.joinIntoString (" "), "0.30 begin 0.10 end begin 0.10 end");
    EXPECT_EQ (time.events.joinIntoString (" "), "1.00");
}

TEST_F (LockedParametersTest, OthersSendNoGesture)
{
    GestureLog level (*product.getValueTreeState().getParameter ("level"));
    restore ("<TestProduct><PARAMS><PARAM id='level' value='30'/></PARAMS></TestProduct>");
    EXPECT_EQ (level.events.joinIntoString (" "), "0.30");
}

TEST_F (LockedParametersTest, HoldFromTheNextStateOn)
{
    product.set ("level", 1.0f);
    openProject ("<TestProduct lockedParams='level'><PARAMS><PARAM id='level' value='10'/></PARAMS></TestProduct>");
    EXPECT_EQ (product.get ("level"), 10.0f);

    openProject ("<TestProduct lockedParams='time'><PARAMS><PARAM id='level' value='20'/><PARAM id='time' value='30'/>"
                 "</PARAMS></TestProduct>");
    EXPECT_EQ (product.get ("level"), 10.0f);
    EXPECT_EQ (product.get ("time"), 30.0f);

    openProject (
        "<TestProduct><PARAMS><PARAM id='level' value='40'/><PARAM id='time' value='50'/></PARAMS></TestProduct>");
    EXPECT_EQ (product.get ("level"), 40.0f);
    EXPECT_EQ (product.get ("time"), 30.0f);
    EXPECT_TRUE (saveProject().contains ("lockedParams=\"\""));
}

TEST_F (LockedParametersTest, SurvivePresets)
{
    const auto preset = sandbox.getLocations().userFolder.getChildFile ("a.test");
    product.getPresetsManager().savePreset (preset, false);
    openProject (
        "<TestProduct lockedParams='level;time'><PARAMS><PARAM id='level' value='10'/><PARAM id='time' value='20'/>"
        "</PARAMS></TestProduct>");
    product.getPresetsManager().loadPreset (preset);

    EXPECT_EQ (product.get ("level"), 10.0f);
    EXPECT_EQ (product.get ("time"), 20.0f);
}
} // namespace
} // namespace cv::pluginCore
