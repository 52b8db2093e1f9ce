#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::varlo
{
/** The height of a label's font in logical pixels, as a proportion of the label's height that depends on the component
    it belongs to: a slider, one with the property halfHeightLabels, or any other. Message thread.
*/
float getSheenLabelFontHeight (const juce::Label&);

/** How many lines a label may break its text into: as many as there is room for, at least one. The font
    height is to be above 0. Any thread.
*/
int getSheenLabelLines (int textAreaHeight, float fontHeight) noexcept;

/** The colours of a text between two heights: bright at the top, darker at the bottom. It keeps the bright
    colour down to that proportion of the height, if that is below 1, and falls off from there. Any thread.
*/
juce::ColourGradient makeSheen (juce::Colour, float top, float bottom, double brightProportion);

/** Draws a label with that sheen, dimmed when it is disabled. While it is being edited, its text is the editor's
    to draw. Its property brightTextProportion says down to where the text is bright. Message thread.
*/
void paintSheenLabel (juce::Graphics&, const juce::Label&, const juce::Font&, juce::Rectangle<int> textArea);
} // namespace cv::varlo
