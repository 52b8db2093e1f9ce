#pragma once

#include <juce_graphics/juce_graphics.h>

namespace cv::pluginCore
{
/** Where the parts of a row in a list of files go, in logical pixels; no size is negative. */
struct FileRowLayout
{
    juce::Rectangle<int> icon;
    juce::Rectangle<int> name;

    /** The columns for size and time, which only files in a row of at least 451 logical pixels have. */
    bool hasDetails = false;
    juce::Rectangle<int> size;
    juce::Rectangle<int> time;
};

/** Lays out a row of that size; without an icon the name moves to the left. Any thread. */
FileRowLayout layOutFileRow (int width, int height, bool hasIcon, bool isDirectory);

/** Fills what is to be drawn of the row with a shape whose ends are rounded. Message thread. */
void paintFileRowHighlight (juce::Graphics&, juce::Colour);

/** Draws a valid icon at its own size, or smaller where it doesn't fit. Message thread. */
void paintFileRowIcon (juce::Graphics&, const juce::Image& icon, juce::Rectangle<int> area);

/** Writes the name and, where the layout has room for them, the size and the time. Message thread. */
void paintFileRowTexts (juce::Graphics&,
                        const FileRowLayout&,
                        juce::Colour nameColour,
                        const juce::String& name,
                        const juce::String& size,
                        const juce::String& time);
} // namespace cv::pluginCore
