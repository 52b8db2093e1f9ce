#include "varlo/lookAndFeel/SliderLabelComp.h"

namespace cv::varlo
{
SliderLabelComp::SliderLabelComp (juce::Slider& slider)
{
    setTooltip (slider.getTooltip());
    setJustificationType (slider.isHorizontal() ? juce::Justification::centredRight : juce::Justification::centred);
    setKeyboardType (juce::TextInputTarget::decimalKeyboard);
    takeColoursFrom (slider);
}

void SliderLabelComp::takeColoursFrom (const juce::Slider& slider)
{
    const auto colourOf = [&] (int id) { return slider.findColour (id, true); };
    const auto text = colourOf (juce::Slider::textBoxTextColourId);
    const auto background = colourOf (juce::Slider::textBoxBackgroundColourId);
    const auto outline = colourOf (juce::Slider::textBoxOutlineColourId);
    const auto highlight = colourOf (juce::Slider::textBoxHighlightColourId);

    setColour (juce::Label::textColourId, text);
    setColour (juce::Label::backgroundColourId, slider.isBar() ? juce::Colours::transparentBlack : background);
    setColour (juce::Label::textWhenEditingColourId, text);
    setColour (juce::Label::outlineColourId, outline);
    setColour (juce::Label::backgroundWhenEditingColourId, background);
    setColour (juce::TextEditor::textColourId, text);
    setColour (juce::TextEditor::outlineColourId, outline);
    setColour (juce::TextEditor::focusedOutlineColourId, outline);
    setColour (juce::TextEditor::highlightColourId, highlight);
    setColour (juce::TextEditor::highlightedTextColourId, highlight.contrasting (0.8f));
}

void SliderLabelComp::mouseEnter (const juce::MouseEvent&)
{
    repaintSlider();
}

void SliderLabelComp::mouseExit (const juce::MouseEvent&)
{
    repaintSlider();
}

void SliderLabelComp::mouseDown (const juce::MouseEvent& event)
{
    if (auto* const slider = findRotarySlider())
        slider->mouseDown (event.getEventRelativeTo (slider));
}

void SliderLabelComp::mouseDrag (const juce::MouseEvent& event)
{
    if (auto* const slider = findRotarySlider())
        slider->mouseDrag (event.getEventRelativeTo (slider));
}

void SliderLabelComp::mouseUp (const juce::MouseEvent& event)
{
    Label::mouseUp (event);

    if (auto* const slider = findRotarySlider())
    {
        slider->mouseUp (event.getEventRelativeTo (slider));
        slider->repaint();
    }
}

void SliderLabelComp::mouseWheelMove (const juce::MouseEvent& event, const juce::MouseWheelDetails& wheel)
{
    if (auto* const slider = findRotarySlider())
        slider->mouseWheelMove (event.getEventRelativeTo (slider), wheel);
}

juce::TextEditor* SliderLabelComp::createEditorComponent()
{
    constexpr auto leftIndent = 4;

    const auto fontHeight = getLookAndFeel().getLabelFont (*this).getHeight();
    const auto topIndent = juce::roundToInt (((float) getHeight() - fontHeight) / 2.0f);

    auto* const textEditor = Label::createEditorComponent();

    if (auto* const slider = findParentComponentOfClass<juce::Slider>())
        textEditor->setTitle (slider->getTitle());

    textEditor->setBorder (juce::BorderSize<int> (0));
    textEditor->setJustification (getJustificationType());
    textEditor->setTooltip (getTooltip());
    textEditor->setIndents (leftIndent, topIndent);
    return textEditor;
}

juce::Slider* SliderLabelComp::findRotarySlider() const
{
    auto* const slider = findParentComponentOfClass<juce::Slider>();
    return slider != nullptr && slider->isRotary() ? slider : nullptr;
}

void SliderLabelComp::repaintSlider() const
{
    if (auto* const slider = findParentComponentOfClass<juce::Slider>())
        slider->repaint();
}
} // namespace cv::varlo
