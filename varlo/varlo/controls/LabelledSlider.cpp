#include "varlo/controls/LabelledSlider.h"

#include "varlo/lookAndFeel/SheenLabelPainter.h"

namespace cv::varlo
{
LabelledSlider::LabelledSlider (juce::AudioProcessorValueTreeState& state,
                                const juce::String& parameterID,
                                const juce::String& caption)
    : label ({}, caption)
{
    if (auto* const parameter = state.getParameter (parameterID))
        attachment = std::make_unique<juce::SliderParameterAttachment> (*parameter, slider, state.undoManager);

    getProperties().set (halfHeightLabels, true);
    addAndMakeVisible (slider);
    addAndMakeVisible (label);
    label.setJustificationType (juce::Justification::centred);
}

LabelledSlider::~LabelledSlider() = default;

void LabelledSlider::resized()
{
    constexpr auto sliderProportion = 0.7f;

    auto area = getLocalBounds();
    slider.setBounds (area.removeFromTop (area.proportionOfHeight (sliderProportion)));
    label.setBounds (area);
}
} // namespace cv::varlo
