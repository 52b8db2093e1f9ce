#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::pluginCore
{
/** A text caret one logical pixel wide, half as wide as JUCE's. Message thread. */
class MyCaretComponent final : public juce::CaretComponent
{
public:
    using juce::CaretComponent::CaretComponent;

    void setCaretPosition (const juce::Rectangle<int>& characterArea) override;

    /** In logical pixels; taken when the caret next moves, and 0 if it is negative. */
    int caretWidth = 1;

private:
    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (MyCaretComponent)
};
} // namespace cv::pluginCore
