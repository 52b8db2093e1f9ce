#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::varlo
{
/** The text box of a slider. On a rotary one, where it lies on the knob, dragging and the wheel turn the knob,
    and a click types a value. Message thread.
*/
class SliderLabelComp final : public juce::Label
{
public:
    /** Takes colours, tooltip and style of the slider that it is meant for. */
    explicit SliderLabelComp (juce::Slider&);

    void mouseEnter (const juce::MouseEvent&) override;
    void mouseExit (const juce::MouseEvent&) override;
    void mouseDown (const juce::MouseEvent&) override;
    void mouseDrag (const juce::MouseEvent&) override;
    void mouseUp (const juce::MouseEvent&) override;
    void mouseWheelMove (const juce::MouseEvent&, const juce::MouseWheelDetails&) override;

    juce::TextEditor* createEditorComponent() override;

private:
    juce::Slider* findRotarySlider() const;
    void repaintSlider() const;
    void takeColoursFrom (const juce::Slider&);

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (SliderLabelComp)
};
} // namespace cv::varlo
