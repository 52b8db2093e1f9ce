#include "varlo/controls/LabelledSlider.h"

#include "varlo/lookAndFeel/Markers.h"

namespace cv::varlo
{
namespace
{
constexpr int longestNameCharacters = 128;
} // namespace

LabelledSlider::LabelledSlider (juce::AudioProcessorValueTreeState& state,
                                const juce::String& parameterID,
                                const juce::String& caption,
                                const juce::String& help)
    : parameter (state.getParameter (parameterID))
    , label ({}, caption)
{
    if (parameter != nullptr)
        attachment = std::make_unique<juce::SliderParameterAttachment> (*parameter, slider, state.undoManager);

    slider.onDragStart = [this] { isDragged = true; };
    slider.onDragEnd = [this] { isDragged = false; };
    slider.setTitle (parameter != nullptr ? parameter->getName (longestNameCharacters) : caption);
    slider.setTooltip (help);

    getProperties().set (properties::halfHeightLabels, true);
    addAndMakeVisible (slider);
    addAndMakeVisible (label);
    label.setJustificationType (juce::Justification::centred);
    label.setAccessible (false); // the knob says it
}

LabelledSlider::~LabelledSlider()
{
    // An attachment that goes in a drag leaves the gesture open, and the host would take the knob for held from then on.
    if (isDragged && parameter != nullptr)
        parameter->endChangeGesture();
}

void LabelledSlider::resized()
{
    constexpr auto sliderProportion = 0.7f;

    auto area = getLocalBounds();
    slider.setBounds (area.removeFromTop (area.proportionOfHeight (sliderProportion)));
    label.setBounds (area);
}
} // namespace cv::varlo
