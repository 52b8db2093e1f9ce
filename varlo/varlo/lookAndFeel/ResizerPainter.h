#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <array>

namespace cv::varlo
{
/** The three dots of a corner of this size, in logical pixels: in the middle, above it and to the left of it. Any
    thread.
*/
std::array<juce::Rectangle<int>, 3> getCornerDots (int width, int height) noexcept;

/** The dots' colour, brighter under the mouse and while they are dragged. Any thread. */
juce::Colour getCornerDotColour (juce::Colour grooveColour, bool isMouseOverOrDragging) noexcept;

/** Draws the dots. Message thread. */
void paintCornerResizer (juce::Graphics&, int width, int height, juce::Colour);

/** Draws a rounded line round a window, as far as the window's border reaches; nothing without one. Message thread. */
void paintResizableFrame (juce::Graphics&, int width, int height, const juce::BorderSize<int>&, juce::Colour);
} // namespace cv::varlo
