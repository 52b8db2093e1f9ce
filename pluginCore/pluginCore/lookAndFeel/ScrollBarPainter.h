#pragma once

#include <juce_graphics/juce_graphics.h>

namespace cv::pluginCore
{
/** Where the thumb is drawn, in logical pixels: one logical pixel inside what the bar gives it, never with a
    negative size. Any thread.
*/
juce::Rectangle<int> getScrollBarThumbArea (juce::Rectangle<int> barArea,
                                            bool isVertical,
                                            int thumbStart,
                                            int thumbSize);

/** Draws the thumb, brighter under the mouse. Message thread. */
void paintScrollBarThumb (juce::Graphics&, juce::Rectangle<int> thumbArea, juce::Colour thumbColour, bool isMouseOver);
} // namespace cv::pluginCore
