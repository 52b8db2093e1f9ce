#pragma once

#include "AudioPluginAudioProcessor.h"
#include "editor/PluginEditor.h"
#include "editor/PluginHeaderComponent.h"

namespace cv::varlo
{
/** The plug-in's window: the header with the presets, and below it JUCE's plain list of the parameters. */
class AudioPluginAudioProcessorEditor final : public pluginCore::PluginEditor
{
public:
    explicit AudioPluginAudioProcessorEditor (AudioPluginAudioProcessor&);

    ~AudioPluginAudioProcessorEditor() override;

    SizeLimits getEditorSizeLimits() const override { return { 100, 100, 10000, 10000 }; }

    double getEditorAspectRatio() const override { return 1.818f; }

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    pluginCore::PluginHeaderComponent header;
    juce::LookAndFeel_V4 listLook; // the framework's large labels would cut the names
    juce::GenericAudioProcessorEditor parameterList;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (AudioPluginAudioProcessorEditor)
};
} // namespace cv::varlo
