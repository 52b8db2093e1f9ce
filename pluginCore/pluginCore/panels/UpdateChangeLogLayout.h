#pragma once

#include <juce_graphics/juce_graphics.h>

namespace cv::pluginCore
{
/** The part of the box that its contents may take. Any thread. */
juce::Rectangle<int> getChangeLogContentArea (juce::Rectangle<int> box);

/** The height of a line of controls in that part, in logical pixels. Any thread. */
int getChangeLogRowHeight (juce::Rectangle<int> contentArea);

/** Where the parts of a change log go, in logical pixels; no size is negative. */
struct ChangeLogLayout
{
    juce::Rectangle<int> title;
    juce::Rectangle<int> textPanel;
    juce::Rectangle<int> downloadButton;
    juce::Rectangle<int> closeButton;
};

/** Puts the title on top, both buttons at the bottom right, "close" last, and the text between. The widths, 0
    or more, are those that the buttons would like to have; where there isn't room for both, the download
    button is cut. Any thread.
*/
ChangeLogLayout layOutChangeLog (juce::Rectangle<int> contentArea, int bestCloseWidth, int bestDownloadWidth);
} // namespace cv::pluginCore
