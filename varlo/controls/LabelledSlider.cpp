#include "controls/LabelledSlider.h"

#include "lookAndFeel/Portion.h"

namespace cv::varlo
{
LabelledSlider::LabelledSlider (juce::AudioProcessorValueTreeState& state,
                                const juce::String& parameterID,
                                const juce::String& caption)
    : label ({}, caption)
{
    if (auto* const parameter = state.getParameter (parameterID))
        attachment = std::make_unique<juce::SliderParameterAttachment> (*parameter, slider, state.undoManager);

    addAndMakeVisible (slider);
    addAndMakeVisible (label);
    label.setJustificationType (juce::Justification::centred);
}

LabelledSlider::~LabelledSlider() = default;

void LabelledSlider::resized()
{
    constexpr auto sliderProportion = 0.7f;
    const auto sliderHeight = juce::jmin (pluginCore::portion (sliderProportion, getHeight()), getHeight());

    slider.setBounds (0, 0, getWidth(), sliderHeight);
    label.setBounds (0, sliderHeight, getWidth(), getHeight() - sliderHeight);
}
} // namespace cv::varlo
