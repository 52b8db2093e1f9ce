#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

namespace cv::test
{
/** The first component of this type, at any depth below the parent, that the condition accepts, or null. */
template <typename Type>
Type* findComponent (
    juce::Component& parent, const std::function<bool (Type&)>& accept = [] (Type&) { return true; })
{
    for (auto* child : parent.getChildren())
    {
        if (auto* match = dynamic_cast<Type*> (child); match != nullptr && accept (*match))
            return match;

        if (auto* match = findComponent<Type> (*child, accept))
            return match;
    }

    return nullptr;
}
} // namespace cv::test
