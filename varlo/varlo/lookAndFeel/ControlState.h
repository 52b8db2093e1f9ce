#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::varlo
{
/** Whether a control shows that the mouse is on it, or on a part of it; a disabled one never does. Message thread. */
inline bool isHovered (const juce::Component& control)
{
    return control.isEnabled() && control.isMouseOverOrDragging (true);
}

/** How opaque a control is, from 0 to 1. Any thread. */
constexpr float getControlAlpha (bool isEnabled) noexcept
{
    return isEnabled ? 1.0f : 0.5f;
}

/** What decides how high a control seems to lie above the panel. */
struct ShadowCaster
{
    bool isEnabled = true;
    bool isMouseOver = false; // or dragging it
    bool isMouseDown = false; // on the control
    juce::ModifierKeys modifiers;
};

/** How far a control's shadow is shifted, in logical pixels: a little at rest, further under the mouse, not at all
    while it is pressed or when it is disabled. A mouse that is about to open a menu doesn't move it. Any thread.
*/
juce::Point<int> getShadowOffset (const ShadowCaster&) noexcept;

/** The same for a control as it stands. Message thread. */
juce::Point<int> shadowOffsetFor (const juce::Component&);
} // namespace cv::varlo
