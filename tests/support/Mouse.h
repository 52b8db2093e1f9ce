#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::test
{
/** Tells the window that the component lies in of the mouse, as the system would: at a position in the
    component, with the left button down or no button. The component has to be on the desktop.
*/
inline void sendMouse (juce::Component& component, juce::Point<float> position, bool isButtonDown)
{
    auto* const peer = component.getPeer();
    jassert (peer != nullptr);

    const juce::ModifierKeys modifiers (isButtonDown ? juce::ModifierKeys::leftButtonModifier
                                                     : juce::ModifierKeys::noModifiers);

    juce::ModifierKeys::currentModifiers = modifiers;
    peer->handleMouseEvent (juce::MouseInputSource::InputSourceType::mouse,
                            peer->getComponent().getLocalPoint (&component, position), modifiers,
                            juce::MouseInputSource::defaultPressure, juce::MouseInputSource::defaultOrientation,
                            juce::Time::currentTimeMillis());
}

/** The same at the component's centre. */
inline void sendMouse (juce::Component& component, bool isButtonDown)
{
    sendMouse (component, component.getLocalBounds().toFloat().getCentre(), isButtonDown);
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
