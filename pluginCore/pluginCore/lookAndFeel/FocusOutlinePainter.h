#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::pluginCore
{
/** The outline around what has the keyboard: a rounded frame of this thickness in logical pixels, within the
    component's bounds, where nothing cuts it off.
*/
class FocusOutlinePainter final : public juce::FocusOutline::OutlineWindowProperties
{
public:
    FocusOutlinePainter (juce::Colour frameColour, float frameThickness)
        : colour (frameColour)
        , thickness (frameThickness)
    {
    }

    juce::Rectangle<int> getOutlineBounds (juce::Component&) override;
    void drawOutline (juce::Graphics&, int width, int height) override;

private:
    const juce::Colour colour;
    const float thickness;
};
} // namespace cv::pluginCore
