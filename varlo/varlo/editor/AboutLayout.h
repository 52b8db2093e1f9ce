#pragma once

#include <juce_graphics/juce_graphics.h>

namespace cv::varlo
{
/** Where the texts of the about panel lie. */
struct AboutLayout
{
    juce::Rectangle<int> name;
    juce::Rectangle<int> version;
    juce::Rectangle<int> link; // as wide as the panel, its height set
    juce::Rectangle<int> copyright;
};

/** For a panel of this size in logical pixels, neither below 0. No area has a negative size. */
AboutLayout layOutAboutPanel (int width, int height);

/** The link's area narrowed to its text, `textWidth` logical pixels wide, so that only the text can be clicked. */
juce::Rectangle<int> narrowToText (juce::Rectangle<int> linkArea, int textWidth);
} // namespace cv::varlo
