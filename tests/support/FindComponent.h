#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>
#include <stdexcept>

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

/** The parent's own child of this type and name, which has to be there. */
template <typename Type>
Type& getChildNamed (juce::Component& parent, const juce::String& name)
{
    for (auto* child : parent.getChildren())
        if (auto* match = dynamic_cast<Type*> (child); match != nullptr && match->getName() == name)
            return *match;

    throw std::runtime_error ("no child named " + name.toStdString());
}

/** The parent's own child of this type and component ID, which has to be there. */
template <typename Type>
Type& getChildWithId (juce::Component& parent, juce::StringRef id)
{
    return dynamic_cast<Type&> (*parent.findChildWithID (id));
}
} // namespace cv::test
