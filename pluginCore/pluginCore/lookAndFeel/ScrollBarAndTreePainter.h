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

/** The triangle beside a tree's branch, fitted into the area that the tree gives to it, in logical pixels. Any
    thread.
*/
juce::Path makeTreeBoxTriangle (juce::Rectangle<float> area, bool isOpen);

/** Half-transparent black or white, whichever shows on the background, stronger under the mouse. Any thread. */
juce::Colour getTreeBoxColour (juce::Colour background, bool isMouseOver);
} // namespace cv::pluginCore
