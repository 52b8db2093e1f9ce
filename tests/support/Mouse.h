#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::test
{
/** Tells the window that the component lies in of the mouse, as the system would: at the component's
    centre, with the left button down or no button. The component has to be on the desktop.
*/
inline void sendMouse (juce::Component& component, bool isButtonDown)
{
    auto* const peer = component.getPeer();
    jassert (peer != nullptr);

    const auto position =
        peer->getComponent().getLocalPoint (&component, component.getLocalBounds().toFloat().getCentre());
    const juce::ModifierKeys modifiers (isButtonDown ? juce::ModifierKeys::leftButtonModifier
                                                     : juce::ModifierKeys::noModifiers);

    juce::ModifierKeys::currentModifiers = modifiers;
    peer->handleMouseEvent (juce::MouseInputSource::InputSourceType::mouse, position, modifiers,
                            juce::MouseInputSource::defaultPressure, juce::MouseInputSource::defaultOrientation,
                            juce::Time::currentTimeMillis());
}

inline void moveMouseTo (juce::Component& component)
{
    sendMouse (component, false);
}

inline void pressMouseOn (juce::Component& component)
{
    sendMouse (component, true);
}

inline void releaseMouseOn (juce::Component& component)
{
    sendMouse (component, false);
}
} // namespace cv::test
