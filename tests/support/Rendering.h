#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

namespace cv::test
{
/** What a drawing leaves on a transparent image of that size, in pixels. */
juce::Image render (int width, int height, const std::function<void (juce::Graphics&)>& draw);

/** What a component of at least one pixel leaves on a transparent image, children included. */
juce::Image render (juce::Component&);

/** The smallest area that holds all pixels for which the condition is true; those that aren't fully
    transparent; those of exactly that colour; those that text of that colour leaves on a transparent image.
*/
juce::Rectangle<int> getAreaWhere (const juce::Image&, const std::function<bool (juce::Colour)>& condition);
juce::Rectangle<int> getInkArea (const juce::Image&);
juce::Rectangle<int> getAreaOf (const juce::Image&, juce::Colour);
juce::Rectangle<int> getTextArea (const juce::Image&, juce::Colour);

/** A colour as it comes back from a transparent image: a translucent one loses some of its precision there. */
juce::Colour asDrawn (juce::Colour);

/** The alpha, from 0 to 255, of the most opaque pixel in the area. */
int getGreatestAlpha (const juce::Image&, juce::Rectangle<int> area);

/** True if two images have the same size and the same pixels. */
bool areSame (const juce::Image&, const juce::Image&);
} // namespace cv::test
