#include "pluginCore/lookAndFeel/TreeBoxPainter.h"

namespace cv::pluginCore
{
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
