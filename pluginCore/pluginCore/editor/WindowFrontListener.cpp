#include "pluginCore/editor/WindowFrontListener.h"

namespace cv::pluginCore
{
WindowFrontListener::WindowFrontListener (juce::Component& componentInWindow, std::function<void()> onBroughtToFront)
    : component (componentInWindow)
    , onFront (std::move (onBroughtToFront))
{
    component.addComponentListener (this);
    componentParentHierarchyChanged (component);
}

WindowFrontListener::~WindowFrontListener()
{
    component.removeComponentListener (this);

    if (window != nullptr)
        window->removeComponentListener (this);
}

void WindowFrontListener::componentParentHierarchyChanged (juce::Component& changed)
{
    auto* const newWindow = component.getTopLevelComponent();

    // The window's own parents are of no interest.
    if (&changed != &component || newWindow == window)
        return;

    if (window != nullptr && window != &component)
        window->removeComponentListener (this);

    // Where the component is its own window, this listens to it already.
    window = newWindow;
    window->addComponentListener (this);
}

void WindowFrontListener::componentBroughtToFront (juce::Component& brought)
{
    if (&brought == window && onFront != nullptr)
        onFront();
}
} // namespace cv::pluginCore
