#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

namespace cv::varlo
{
/** What a screen reader learns of a component that only shows something: name and help are the component's title
    and help text, the value is asked for each time. It can't be set. Message thread.
*/
std::unique_ptr<juce::AccessibilityHandler> makeImageAccessibility (juce::Component&,
                                                                    std::function<juce::String()> getValue);
} // namespace cv::varlo
