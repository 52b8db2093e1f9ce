#pragma once

#include "support/MessageLoop.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::test
{
/** Tells the window that the component lies in of a key, as the system would. True if the window used it; what it
    doesn't use is the host's. The component has to be on the desktop.
*/
inline bool pressKey (juce::Component& component, const juce::KeyPress& key)
{
    auto* const peer = component.getPeer();
    jassert (peer != nullptr);
    return peer->handleKeyPress (key);
}

inline bool pressKey (juce::Component& component, int keyCode, int modifiers = juce::ModifierKeys::noModifiers)
{
    return pressKey (component, juce::KeyPress (keyCode, juce::ModifierKeys (modifiers), 0));
}

/** Gives the keyboard to the component, or to the first in it that takes it, once its window is there. False if that
    can't be had.
*/
inline bool giveKeyboardTo (juce::Component& component)
{
    return runMessageLoopUntil (
        [&]
        {
            component.grabKeyboardFocus();
            return component.hasKeyboardFocus (true);
        });
}
} // namespace cv::test
