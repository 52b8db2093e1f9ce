#pragma once

#include "pluginCore/processor/PluginProcessor.h"
#include "varlo/dsp/DelayEngine.h"
#include "varlo/parameters/Parameters.h"
#include "varlo/spectrum/FFTProcessor.h"
#include "varlo/transport/TransportWatch.h"

namespace cv::varlo
{
/** The delay as hosts see it: parameters and transport on one side, the DelayEngine on the other. */
class AudioPluginAudioProcessor final : public pluginCore::PluginProcessor
{
public:
    /** `host` is the host that this runs in, which matters to what counts as a jump of its transport. */
    explicit AudioPluginAudioProcessor (const juce::PluginHostType& host = {});

    void releaseResources() override {}

    /** Far above the longest delay of 10 s, on purpose: at full feedback the repeats outlast many
        times the delay, and a host that renders the tail must not cut them.
    */
    double getTailLengthSeconds() const override { return 300.0; }

    /** Empty: hosts call it whenever they stop, and echoes are to survive that. */
    void reset() override {}

    bool isBusesLayoutSupported (const BusesLayout&) const override;

    juce::String getReleaseNotesUrl() const override;
    juce::String getProductUrl() const override;

    int getReleaseYear() const override { return 2025; }

    /** One line for the about panel: "v1.0.0 - VST3 (x64)". */
    juce::String getVersionDisplayText() const override;

    /** Where a picture of the output comes from, for the whole life of the plug-in. */
    FFTProcessor& getFFTProcessor() noexcept { return fftProcessor; }

protected:
    pluginCore::PluginEditor* createPluginEditor() override;

    void prepare (double sampleRate, int samplesPerBlock) override;

    int getMaximumLatencySamples (const juce::dsp::ProcessSpec&) override { return 0; }

    void process (juce::AudioBuffer<float>&, juce::MidiBuffer&) override;

private:
    const juce::PluginHostType hostType;
    TransportWatch transportWatch;
    const Parameters parameters;
    DelayEngine engine;
    FFTProcessor fftProcessor; // last, so that its thread ends before anything else goes

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (AudioPluginAudioProcessor)
};
} // namespace cv::varlo
