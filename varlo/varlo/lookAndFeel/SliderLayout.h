#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::varlo
{
/** Where a slider of this size in logical pixels has its knob or groove and its text box: a rotary slider's value
    stands inside the ring, any other's in the last fifth. Any thread.
*/
juce::Slider::SliderLayout layOutSlider (int width, int height, bool isRotary) noexcept;
} // namespace cv::varlo
