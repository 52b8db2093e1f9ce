#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

namespace cv::pluginCore
{
/** Tells when the window that a component lies in comes to the front. A click on it makes it do so, before the
    component that is clicked hears of the click. Message thread only.
*/
class WindowFrontListener final : private juce::ComponentListener
{
public:
    /** The component has to outlive this. It may change its window, or have none. */
    WindowFrontListener (juce::Component& componentInWindow, std::function<void()> onBroughtToFront);
    ~WindowFrontListener() override;

private:
    void componentParentHierarchyChanged (juce::Component&) override;
    void componentBroughtToFront (juce::Component&) override;

    juce::Component& component;
    juce::Component::SafePointer<juce::Component> window;
    const std::function<void()> onFront;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (WindowFrontListener)
};
} // namespace cv::pluginCore
