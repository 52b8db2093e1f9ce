#include "pluginCore/lookAndFeel/ScrollBarPainter.h"

namespace cv::pluginCore
{
juce::Rectangle<int> getScrollBarThumbArea (juce::Rectangle<int> barArea,
                                            bool isVertical,
                                            int thumbStart,
                                            int thumbSize)
{
    const auto area = isVertical ? barArea.withY (thumbStart).withHeight (thumbSize)
                                 : barArea.withX (thumbStart).withWidth (thumbSize);

    return area.reduced (1);
}

void paintScrollBarThumb (juce::Graphics& g, juce::Rectangle<int> thumbArea, juce::Colour thumbColour, bool isMouseOver)
{
    constexpr auto cornerSize = 4.0f;
    constexpr auto mouseOverBrightening = 0.25f;

    g.setColour (isMouseOver ? thumbColour.brighter (mouseOverBrightening) : thumbColour);
    g.fillRoundedRectangle (thumbArea.toFloat(), cornerSize);
}
} // namespace cv::pluginCore
