#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::varlo
{
/** Where the header's two visible buttons lie, in the header's own coordinates. */
struct HeaderButtonAreas
{
    juce::Rectangle<int> logo;
    juce::Rectangle<int> info;
};

/** The buttons of a header of this size in logical pixels: from its top to its bottom, the logo near the left edge, and
    the information button near the right one, in what a header's proportions leave there. Any thread.
*/
HeaderButtonAreas layOutHeaderButtons (int width, int height) noexcept;

/** Where a slider of this size in logical pixels has its knob or groove and its text box: a rotary slider's value
    stands inside the ring, any other's in the last fifth. Any thread.
*/
juce::Slider::SliderLayout layOutSlider (int width, int height, bool isRotary) noexcept;
} // namespace cv::varlo
