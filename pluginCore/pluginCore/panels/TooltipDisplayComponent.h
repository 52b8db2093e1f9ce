#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::pluginCore
{
/** A panel for products that show the explanation of a control in a fixed place instead of beside the mouse.
    The look-and-feel writes it smaller than other labels. Message thread.
*/
class TooltipDisplayComponent : public juce::Component
{
public:
    TooltipDisplayComponent();

    void setText (const juce::String& text);

    void resized() override;

private:
    juce::Label label;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (TooltipDisplayComponent)
};
} // namespace cv::pluginCore
