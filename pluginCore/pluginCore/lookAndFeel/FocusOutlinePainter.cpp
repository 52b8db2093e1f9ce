#include "pluginCore/lookAndFeel/FocusOutlinePainter.h"

namespace cv::pluginCore
{
juce::Rectangle<int> FocusOutlinePainter::getOutlineBounds (juce::Component& component)
{
    return component.getScreenBounds();
}

void FocusOutlinePainter::drawOutline (juce::Graphics& g, int width, int height)
{
    const auto frame = juce::Rectangle (width, height).toFloat().reduced (0.5f * thickness);

    g.setColour (colour);
    g.drawRoundedRectangle (frame, 2.0f * thickness, thickness);
}
} // namespace cv::pluginCore
