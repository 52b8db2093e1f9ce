#include "support/TestProduct.h"

#include "pluginCore/parameters/NumberRange.h"
#include "support/TestProductEditor.h"

namespace cv::test
{
namespace
{
juce::AudioProcessorValueTreeState::ParameterLayout createLayout()
{
    juce::AudioProcessorValueTreeState::ParameterLayout layout;
    layout.add (std::make_unique<juce::AudioParameterFloat> (juce::ParameterID { "level", 1 }, "Level",
                                                             pluginCore::makeNumberRange (0.0f, 100.0f), 50.0f),
                std::make_unique<juce::AudioParameterFloat> (juce::ParameterID { "time", 1 }, "Time",
                                                             pluginCore::makeNumberRange (1.0f, 1000.0f), 100.0f));
    return layout;
}

juce::String toText (const juce::ValueTree& tree)
{
    return tree.toXmlString (juce::XmlElement::TextFormat().singleLine().withoutHeader());
}
} // namespace

TestProduct::TestProduct (const pluginCore::PresetLocations& locations,
                          const TreeHook& dataTreeHook,
                          const TreeHook& settingsTreeHook,
                          const juce::String& name)
    : PluginProcessor ({ name, "2.3.4", "Test Maker" }, createLayout(), locations, dataTreeHook, settingsTreeHook)
{
}

pluginCore::PluginEditor* TestProduct::createPluginEditor()
{
    return new TestProductEditor (*this);
}

void TestProduct::dataTreeRestored (juce::ValueTree tree)
{
    restoredTrees.add (toText (tree));

    if (tree.hasProperty ("convert"))
        tree.setProperty ("converted", 1, nullptr);
}

void TestProduct::settingsTreeRestored (juce::ValueTree tree)
{
    dataTreeRestored (tree);
}

float TestProduct::get (const juce::String& parameterId) const
{
    return valueTreeState.getRawParameterValue (parameterId)->load();
}

void TestProduct::set (const juce::String& parameterId, float value)
{
    auto* parameter = valueTreeState.getParameter (parameterId);
    parameter->setValueNotifyingHost (parameter->convertTo0to1 (value));
}

void TestProduct::processOneBlock()
{
    juce::AudioBuffer<float> buffer (2, 64);
    buffer.clear();
    juce::MidiBuffer midi;
    processBlock (buffer, midi);
}

void TestProduct::process (juce::AudioBuffer<float>& buffer, juce::MidiBuffer&)
{
    volatile float smallest = std::numeric_limits<float>::min();
    denormalsWereFlushed = juce::exactlyEqual (smallest * 0.5f, 0.0f);
    buffer.applyGain (2.0f);
}
} // namespace cv::test
