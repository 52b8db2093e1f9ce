#pragma once

#include "pluginCore/editor/PluginEditor.h"
#include "pluginCore/editor/PluginHeaderComponent.h"
#include "varlo/AudioPluginAudioProcessor.h"
#include "varlo/controls/BlinkingLed.h"
#include "varlo/controls/LabelledSlider.h"
#include "varlo/controls/TapButton.h"
#include "varlo/editor/AboutComponent.h"
#include "varlo/editor/SpectrogramComponent.h"
#include "varlo/lookAndFeel/PluginLookAndFeel.h"

namespace cv::varlo
{
/** The plug-in's window: the header, the spectrogram of the output, and a row with the tap button, the LED that
    flashes at the delay time and a knob for each parameter. Logo and information button show the about panel over all of it.
    Message thread.
*/
class AudioPluginAudioProcessorEditor final : public pluginCore::PluginEditor
{
public:
    /** The processor outlives the editor. */
    explicit AudioPluginAudioProcessorEditor (AudioPluginAudioProcessor&);

    ~AudioPluginAudioProcessorEditor() override;

    SizeLimits getEditorSizeLimits() const override { return { 100, 100, 10000, 10000 }; }

    double getEditorAspectRatio() const override { return 1.818f; }

    void mouseDown (const juce::MouseEvent&) override {}

    void paint (juce::Graphics&) override;
    void resized() override;

private:
    using DefaultPluginLookAndFeel = pluginCore::DefaultLookAndFeel<PluginLookAndFeel>;

    void addComponents (juce::AudioProcessorValueTreeState&);
    void setTabOrder();
    void setUpLogo();
    void followDelay();
    void setDelay (double milliseconds);

    const std::shared_ptr<DefaultPluginLookAndFeel> lookAndFeelHolder = DefaultPluginLookAndFeel::getShared();

    pluginCore::PluginHeaderComponent header;
    SpectrogramComponent spectrogram;
    AboutComponent aboutPanel;
    juce::OwnedArray<LabelledSlider> knobs; // in the order of editorKnobs
    BlinkingLed led;
    TapButton tapButton;
    juce::AudioParameterFloat& delayParameter; // milliseconds
    juce::ParameterAttachment delayAttachment;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (AudioPluginAudioProcessorEditor)
};
} // namespace cv::varlo
