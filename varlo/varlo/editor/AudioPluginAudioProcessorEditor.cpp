#include "varlo/editor/AudioPluginAudioProcessorEditor.h"

#include "varlo/editor/EditorLayout.h"
#include "varlo/lookAndFeel/Palette.h"

#include <VarloResources.h>

namespace cv::varlo
{
namespace
{
constexpr double longestTapIntervalMilliseconds = 10000.0;

int getColumn (std::string_view parameterId)
{
    const auto isIt = [&] (const auto& knob) { return knob.parameterId == parameterId; };
    return (int) std::distance (editorKnobs.begin(), std::find_if (editorKnobs.begin(), editorKnobs.end(), isIt));
}

juce::AudioParameterFloat& findDelayParameter (const juce::AudioProcessorValueTreeState& tree)
{
    return dynamic_cast<juce::AudioParameterFloat&> (*tree.getParameter (parameterIds::delay));
}
} // namespace

AudioPluginAudioProcessorEditor::AudioPluginAudioProcessorEditor (AudioPluginAudioProcessor& audioProcessor)
    : PluginEditor (audioProcessor)
    , header (audioProcessor.getPresetsManager(), &audioProcessor.getUndoManager())
    , spectrogram (audioProcessor.getFFTProcessor())
    , aboutPanel (audioProcessor)
    , tapButton (longestTapIntervalMilliseconds)
    , delayParameter (findDelayParameter (audioProcessor.getValueTreeState()))
    , delayAttachment (delayParameter, [this] (float) { followDelay(); })
{
    addComponents (audioProcessor.getValueTreeState());
    setUpLogo();

    header.onLogoClicked = [this] { aboutPanel.setVisible (true); };
    spectrogram.addMouseListener (this, true);

    followDelay();
    led.setLedColour (palette::led);

    tapButton.setButtonText ("Tap");
    tapButton.onTempoTapped = [this] (double milliseconds) { setDelay (milliseconds); };
}

AudioPluginAudioProcessorEditor::~AudioPluginAudioProcessorEditor()
{
    setLookAndFeel (nullptr);
}

void AudioPluginAudioProcessorEditor::addComponents (juce::AudioProcessorValueTreeState& state)
{
    for (const auto& knob : editorKnobs)
        addAndMakeVisible (knobs.add (
            std::make_unique<LabelledSlider> (state, knob.parameterId, knob.caption, juce::translate (knob.help))));

    // Of the children Mix is the fourth, though its column is the last.
    knobs[getColumn (parameterIds::mix)]->toBehind (knobs[getColumn (parameterIds::lowpass)]);

    addAndMakeVisible (header);
    addAndMakeVisible (tapButton);
    addAndMakeVisible (spectrogram);
    addAndMakeVisible (led);
    addChildComponent (aboutPanel);
    setTabOrder();
}

/** As the eye goes: from the top to the bottom, and from left to right. */
void AudioPluginAudioProcessorEditor::setTabOrder()
{
    auto place = 0;

    for (auto* const component : std::initializer_list<juce::Component*> { &header, &spectrogram, &tapButton, &led })
        component->setExplicitFocusOrder (++place);

    for (auto* const knob : knobs)
        knob->setExplicitFocusOrder (++place);
}

void AudioPluginAudioProcessorEditor::setUpLogo()
{
    header.setLogo (resources::logo_path, resources::logo_pathSize);
    header.getLogoButton().setTitle (processor.getName());
}

void AudioPluginAudioProcessorEditor::followDelay()
{
    led.setBlinkInterval (juce::roundToInt (delayParameter.get()));
}

void AudioPluginAudioProcessorEditor::setDelay (double milliseconds)
{
    const auto newDelay = (float) milliseconds;

    delayParameter.beginChangeGesture();

    if (! juce::approximatelyEqual (delayParameter.get(), newDelay))
        delayParameter.setValueNotifyingHost (delayParameter.convertTo0to1 (newDelay));

    delayParameter.endChangeGesture();
}

void AudioPluginAudioProcessorEditor::paint (juce::Graphics& g)
{
    g.fillAll (palette::panel);
}

void AudioPluginAudioProcessorEditor::resized()
{
    const auto layout = layOutEditor (getWidth(), getHeight());

    aboutPanel.setBounds (getLocalBounds());
    header.setBounds (layout.header);
    spectrogram.setBounds (layout.spectrogram);
    tapButton.setBounds (layout.tapButton);
    led.setBounds (layout.led);

    for (size_t i = 0; i < layout.knobs.size(); ++i)
        knobs[(int) i]->setBounds (layout.knobs[i]);
}
} // namespace cv::varlo
