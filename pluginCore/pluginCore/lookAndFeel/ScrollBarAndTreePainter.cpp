#include "pluginCore/lookAndFeel/ScrollBarAndTreePainter.h"

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

juce::Path makeTreeBoxTriangle (juce::Rectangle<float> area, bool isOpen)
{
    constexpr auto indent = 2.0f;

    juce::Path triangle;
    triangle.addTriangle (0.0f, 0.0f, 1.0f, isOpen ? 0.0f : 0.5f, isOpen ? 0.5f : 0.0f, 1.0f);
    triangle.applyTransform (triangle.getTransformToScaleToFit (
        area.translated (indent, 0.0f).reduced (0.0f, area.getHeight() / 3.0f), true));
    return triangle;
}

juce::Colour getTreeBoxColour (juce::Colour background, bool isMouseOver)
{
    constexpr auto leastBrightnessOfLightColours = 0.5f;
    constexpr juce::uint8 alpha = 0x4c, mouseOverAlpha = 0x80;

    const auto isLight = background.getPerceivedBrightness() >= leastBrightnessOfLightColours;
    return (isLight ? juce::Colours::black : juce::Colours::white).withAlpha (isMouseOver ? mouseOverAlpha : alpha);
}
} // namespace cv::pluginCore
