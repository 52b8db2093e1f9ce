#pragma once

#include "pluginCore/processor/PluginProcessor.h"

namespace cv::test
{
/** The smallest product there can be, with two parameters and what a test wants to vary or to see as plain
    members. Its sound is the input, doubled.
*/
class TestProduct final : public pluginCore::PluginProcessor
{
public:
    explicit TestProduct (const pluginCore::PresetLocations&,
                          const TreeHook& dataTreeHook = {},
                          const TreeHook& settingsTreeHook = {},
                          const juce::String& name = "Test Product");

    void releaseResources() override {}

    double getTailLengthSeconds() const override { return 0.0; }

    void reset() override { ++numResets; }

    juce::String getReleaseNotesUrl() const override { return releaseNotesUrl; }

    juce::String getProductUrl() const override { return {}; }

    int getReleaseYear() const override { return 0; }

    bool isBetaBuild() const override { return beta; }

    int getBetaNumber() const override { return betaNumber; }

    void dataTreeRestored (juce::ValueTree tree) override;

    void settingsTreeRestored (juce::ValueTree tree) override;

    /** A parameter's value in its own unit: "level" runs from 0 to 100 and starts at 50, "time" from 1 to
        1000 and starts at 100.
    */
    float get (const juce::String& parameterId) const;
    void set (const juce::String& parameterId, float value);

    /** Feeds one block, and so takes what waits for the next one. */
    void processOneBlock();

    using PluginProcessor::dataTree;
    using PluginProcessor::settingsTree;

    bool beta = false;
    int betaNumber = 0;
    int maximumLatency = 0;
    double preparedRate = 0.0;
    bool denormalsWereFlushed = false;
    int numResets = 0;
    juce::String releaseNotesUrl;

    /** Of the editors that are opened from now on. */
    double editorAspectRatio = 2.0;

    /** What the hooks got, as XML. Where they find a property "convert" they add "converted". */
    juce::StringArray restoredTrees;

private:
    pluginCore::PluginEditor* createPluginEditor() override;

    void prepare (double sampleRate, int) override { preparedRate = sampleRate; }

    int getMaximumLatencySamples (const juce::dsp::ProcessSpec&) override { return maximumLatency; }

    void process (juce::AudioBuffer<float>&, juce::MidiBuffer&) override;
};
} // namespace cv::test
