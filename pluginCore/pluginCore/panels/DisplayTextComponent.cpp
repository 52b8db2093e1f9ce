#include "pluginCore/panels/DisplayTextComponent.h"

#include "pluginCore/lookAndFeel/ColourIds.h"

namespace cv::pluginCore
{
DisplayTextComponent::DisplayTextComponent()
{
    textEditor.setReadOnly (true);
    textEditor.setEscapeAndReturnKeysConsumed (false);
    textEditor.setMultiLine (true, true);
    addAndMakeVisible (textEditor);

    DisplayTextComponent::colourChanged();
}

void DisplayTextComponent::paint (juce::Graphics& g)
{
    constexpr auto cornerSize = 2.0f;

    g.setColour (findColour (displayTextBackgroundColourId));
    g.fillRoundedRectangle (getLocalBounds().toFloat().reduced (0.5f), cornerSize);
}

void DisplayTextComponent::resized()
{
    textEditor.setBounds (getLocalBounds().reduced (1));
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
