#include "varlo/lookAndFeel/ResizerPainter.h"

namespace cv::varlo
{
std::array<juce::Rectangle<int>, 3> getCornerDots (int width, int height) noexcept
{
    constexpr auto dotProportion = 0.22f;

    const auto diameter = juce::roundToInt (dotProportion * (float) juce::jmin (width, height));
    const juce::Rectangle<int> dot (diameter, diameter);
    return { dot.withPosition (width / 2, height / 2), dot.withPosition (width / 2, 0),
             dot.withPosition (0, height / 2) };
}

juce::Colour getCornerDotColour (juce::Colour grooveColour, bool isMouseOverOrDragging) noexcept
{
    constexpr auto contrast = 0.2f;

    const auto colour = grooveColour.brighter (contrast);
    return isMouseOverOrDragging ? colour.brighter (contrast) : colour.darker (contrast);
}

void paintCornerResizer (juce::Graphics& g, int width, int height, juce::Colour colour)
{
    g.setColour (colour);

    for (const auto& dot : getCornerDots (width, height))
        g.fillEllipse (dot.toFloat());
}

void paintResizableFrame (
    juce::Graphics& g, int width, int height, const juce::BorderSize<int>& border, juce::Colour colour)
{
    constexpr auto cornerSize = 3.0f, thickness = 1.0f, lineCentre = 0.5f;

    if (border.isEmpty())
        return;

    const juce::Rectangle<int> area (width, height);
    const juce::Graphics::ScopedSaveState clipKeeper (g);
    g.excludeClipRegion (border.subtractedFrom (area));
    g.setColour (colour);
    g.drawRoundedRectangle (area.toFloat().reduced (lineCentre), cornerSize, thickness);
}
} // namespace cv::varlo
