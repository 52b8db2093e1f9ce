#pragma once

#include <juce_graphics/juce_graphics.h>

namespace cv::pluginCore
{
/** The triangle beside a tree's branch, fitted into the area that the tree gives to it, in logical pixels. Any
    thread.
*/
juce::Path makeTreeBoxTriangle (juce::Rectangle<float> area, bool isOpen);

/** Half-transparent black or white, whichever shows on the background, stronger under the mouse. Any thread. */
juce::Colour getTreeBoxColour (juce::Colour background, bool isMouseOver);
} // namespace cv::pluginCore
