#include "varlo/controls/LabelledSlider.h"

#include "varlo/lookAndFeel/SheenLabelPainter.h"

namespace cv::varlo
{
LabelledSlider::LabelledSlider (juce::AudioProcessorValueTreeState& state,
                                const juce::String& parameterID,
                                const juce::String& caption)
    : parameter (state.getParameter (parameterID))
    , label ({}, caption)
{
    if (parameter != nullptr)
        attachment = std::make_unique<juce::SliderParameterAttachment> (*parameter, slider, state.undoManager);

    slider.onDragStart = [this] { isDragged = true; };
    slider.onDragEnd = [this] { isDragged = false; };

    getProperties().set (halfHeightLabels, true);
    addAndMakeVisible (slider);
    addAndMakeVisible (label);
    label.setJustificationType (juce::Justification::centred);
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
