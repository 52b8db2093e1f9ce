#include "panels/DisplayTextComponent.h"

#include "lookAndFeel/ColourIds.h"

namespace cv::pluginCore
{
DisplayTextComponent::DisplayTextComponent()
{
    textEditor.setReadOnly (true);
    textEditor.setMultiLine (true, true);
    addAndMakeVisible (textEditor);

    DisplayTextComponent::colourChanged();
}

void DisplayTextComponent::paint (juce::Graphics& g)
{
    constexpr auto cornerSize = 2.0f;

    g.setColour (findColour (displayTextBackgroundColourId));
    g.fillRoundedRectangle (0.5f, 0.5f, static_cast<float> (juce::jmax (getWidth() - 1, 0)),
                            static_cast<float> (juce::jmax (getHeight() - 1, 0)), cornerSize);
}

void DisplayTextComponent::resized()
{
    textEditor.setBounds (1, 1, juce::jmax (getWidth() - 2, 0), juce::jmax (getHeight() - 2, 0));
}

void DisplayTextComponent::colourChanged()
{
    const auto isKnown = [this] (int id) { return isColourSpecified (id) || getLookAndFeel().isColourSpecified (id); };

    if (! isKnown (displayTextBackgroundColourId))
        return;

    const auto background = findColour (displayTextBackgroundColourId);
    textEditor.setColour (juce::TextEditor::backgroundColourId, background);
    textEditor.setColour (juce::TextEditor::highlightColourId, background.contrasting (0.1f));

    // This one sets the colour for later texts too.
    if (isKnown (displayTextTextColourId))
        textEditor.applyColourToAllText (findColour (displayTextTextColourId));
}
} // namespace cv::pluginCore
