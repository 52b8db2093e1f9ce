#include "editor/AudioPluginAudioProcessorEditor.h"

namespace cv::varlo
{
namespace
{
constexpr float headerProportion = 0.12f;
const juce::Colour background { 0xff151515 };
} // namespace

AudioPluginAudioProcessorEditor::AudioPluginAudioProcessorEditor (AudioPluginAudioProcessor& audioProcessor)
    : PluginEditor (audioProcessor)
    , header (audioProcessor.getPresetsManager(), &audioProcessor.getUndoManager())
    , parameterList (audioProcessor)
{
    parameterList.setLookAndFeel (&listLook);
    addAndMakeVisible (header);
    addAndMakeVisible (parameterList);
}

AudioPluginAudioProcessorEditor::~AudioPluginAudioProcessorEditor()
{
    parameterList.setLookAndFeel (nullptr);
}

void AudioPluginAudioProcessorEditor::paint (juce::Graphics& g)
{
    g.fillAll (background);
}

void AudioPluginAudioProcessorEditor::resized()
{
    auto area = getLocalBounds();
    header.setBounds (area.removeFromTop ((int) (headerProportion * (float) getHeight())));
    parameterList.setBounds (area);
}
} // namespace cv::varlo
