#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::pluginCore
{
/** The height of a label's font in logical pixels, as a proportion of the label's size that depends on the component
    it belongs to. The property fontScale, where it is above 0, states the proportion itself; in a slider, vertical says that
    the text is turned and the label's width counts (Markers.h). Message thread.
*/
float getLabelFontHeight (const juce::Label&);

/** How many lines a label may break its text into: as many as there is room for, but never below two. The
    font height is to be above 0. Any thread.
*/
int getMaximumLabelLines (int textAreaHeight, float fontHeight) noexcept;

/** Draws a label, dimmed when it is disabled. While it is being edited, its text is the editor's to draw. The
    text is never squeezed. Message thread.
*/
void paintLabel (juce::Graphics&, const juce::Label&, const juce::Font&, juce::Rectangle<int> textArea);
} // namespace cv::pluginCore
