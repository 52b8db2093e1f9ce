#include "varlo/lookAndFeel/ControlState.h"

namespace cv::varlo
{
juce::Point<int> getShadowOffset (const ShadowCaster& caster) noexcept
{
    constexpr juce::Point<int> flat, atRest (1, 1), lifted (1, 2);

    if (! caster.isEnabled)
        return flat;

    // Ctrl counts on every system, not only where a click with it opens menus.
    const auto opensMenu = caster.modifiers.isRightButtonDown() || caster.modifiers.isCtrlDown();

    if (opensMenu || ! (caster.isMouseOver || caster.isMouseDown))
        return atRest;

    return caster.isMouseDown ? flat : lifted;
}

juce::Point<int> shadowOffsetFor (const juce::Component& control)
{
    const auto isMouseOver = control.isMouseOverOrDragging (true);

    return getShadowOffset ({ .isEnabled = control.isEnabled(),
                              .isMouseOver = isMouseOver,
                              .isMouseDown = isMouseOver && control.isMouseButtonDown (true),
                              .modifiers = juce::ModifierKeys::getCurrentModifiersRealtime() });
}
} // namespace cv::varlo
