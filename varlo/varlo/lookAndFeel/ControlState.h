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
} // namespace cv::varlo
