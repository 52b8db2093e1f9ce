#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <array>

namespace cv::varlo
{
/** What a linear slider looks like at the moment. Positions are in the slider's coordinates, along it. */
struct LinearSliderState
{
    bool isVertical = false;
    bool hasTwoValues = false;
    float position = 0.0f;
    float minPosition = 0.0f; // of the sliders with two values
    float maxPosition = 0.0f;
    bool hasTextBox = false;
    bool isEnabled = true;
    bool isHovered = false;
    juce::Point<float> mousePosition;
    juce::Colour track; // of an enabled slider without the mouse on it
    juce::Colour thumb;
};

/** Where a rounded bar lies, in logical pixels, and how large its corners are. */
struct RoundedBar
{
    juce::Rectangle<float> area;
    float cornerSize = 0.0f;
};

/** The groove of a horizontal slider: half of its area's height, in whole logical pixels. Any thread. */
RoundedBar getHorizontalGroove (juce::Rectangle<int> area) noexcept;

/** The groove of a vertical slider: a thin one at the centre, thinner beside a text box. Any thread. */
RoundedBar getVerticalGroove (juce::Rectangle<int> area, bool hasTextBox) noexcept;

/** What is filled of a groove: from the left or the bottom to a position, or between two positions, at least
    half as wide as the groove is high. Any thread.
*/
RoundedBar getHorizontalBar (const RoundedBar& groove, float position) noexcept;
RoundedBar getVerticalBar (const RoundedBar& groove, float position) noexcept;
RoundedBar getTwoValueBar (const RoundedBar& groove, float minPosition, float maxPosition) noexcept;

/** The dots that show under the mouse where a horizontal bar can be held. They want some length of it. Any thread. */
bool hasRoomForDots (const RoundedBar& bar) noexcept;
juce::Rectangle<float> getLeftDot (const RoundedBar& bar) noexcept;
juce::Rectangle<float> getRightDot (const RoundedBar& bar) noexcept;

/** The colours of the left and the right dot: the one nearer to the mouse is the darker. Any thread. */
std::array<juce::Colour, 2> getDotColours (const RoundedBar& bar,
                                           juce::Point<float> mousePosition,
                                           juce::Colour thumb) noexcept;

/** Draws a slider in that state. Message thread. */
void paintLinearSlider (juce::Graphics&, juce::Rectangle<int> area, const LinearSliderState&);
} // namespace cv::varlo
