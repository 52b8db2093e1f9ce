#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::pluginCore
{
/** A text to read, in a frame with rounded corners: lines are wrapped, and it scrolls. Its colours are
    displayTextBackgroundColourId and displayTextTextColourId; without the first it keeps JUCE's.
    Message thread.
*/
class DisplayTextComponent final : public juce::Component
{
public:
    DisplayTextComponent();

    /** Holds the text. A text set later keeps its colours and its font. */
    juce::TextEditor& getTextEditor() noexcept { return textEditor; }

    void paint (juce::Graphics&) override;
    void resized() override;
    void colourChanged() override;

private:
    juce::TextEditor textEditor;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (DisplayTextComponent)
};
} // namespace cv::pluginCore
