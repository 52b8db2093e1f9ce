#include "pluginCore/lookAndFeel/FileRowPainter.h"

#include "pluginCore/text/ShapeableText.h"

namespace cv::pluginCore
{
namespace
{
constexpr auto leastWidthWithDetails = 451;
constexpr auto iconMargin = 2;
constexpr auto columnGap = 8;

void paintText (juce::Graphics& g,
                const juce::String& text,
                juce::Rectangle<int> area,
                juce::Justification justification)
{
    g.drawFittedText (text, area, justification, 1);
}
} // namespace

FileRowLayout layOutFileRow (int width, int height, bool hasIcon, bool isDirectory)
{
    const auto widthFraction = [width] (float part) { return juce::roundToInt (part * (float) width); };
    const juce::Rectangle<int> row (width, height);
    const auto nameX = juce::roundToInt ((hasIcon ? 1.5f : 0.5f) * (float) height);

    FileRowLayout layout;
    layout.hasDetails = width >= leastWidthWithDetails && ! isDirectory;

    if (hasIcon)
        layout.icon = row.withWidth (nameX).reduced (iconMargin);

    if (layout.hasDetails)
    {
        const auto sizeX = widthFraction (0.7f);
        const auto timeX = widthFraction (0.8f);
        layout.name = row.withWidth (sizeX).withLeft (nameX);
        layout.size = row.withWidth (timeX - columnGap).withLeft (sizeX);
        layout.time = row.withWidth (width - columnGap).withLeft (timeX);
    }
    else
    {
        layout.name = row.withLeft (nameX);
    }

    return layout;
}

void paintFileRowHighlight (juce::Graphics& g, juce::Colour colour)
{
    const auto area = g.getClipBounds().toFloat();
    g.setColour (colour);
    g.fillRoundedRectangle (area, 0.25f * area.getHeight());
}

void paintFileRowIcon (juce::Graphics& g, const juce::Image& icon, juce::Rectangle<int> area)
{
    if (area.isEmpty())
        return;

    // An image takes the opacity of the current colour, and a highlight's may be anything.
    g.setColour (juce::Colours::black);
    g.drawImageWithin (icon, area.getX(), area.getY(), area.getWidth(), area.getHeight(),
                       juce::RectanglePlacement::centred | juce::RectanglePlacement::onlyReduceInSize);
}

void paintFileRowTexts (juce::Graphics& g,
                        const FileRowLayout& layout,
                        juce::Colour nameColour,
                        const juce::String& name,
                        const juce::String& size,
                        const juce::String& time)
{
    constexpr auto nameHeightProportion = 0.7f;
    constexpr auto detailHeightProportion = 0.5f;
    constexpr juce::uint32 detailColour = 0xff555555;

    const auto height = (float) layout.name.getHeight();

    g.setColour (nameColour);
    g.setFont (nameHeightProportion * height);
    paintText (g, getShapeableLine (name), layout.name, juce::Justification::centredLeft);

    if (layout.hasDetails)
    {
        g.setColour (juce::Colour (detailColour));
        g.setFont (detailHeightProportion * height);
        paintText (g, size, layout.size, juce::Justification::centredRight);
        paintText (g, time, layout.time, juce::Justification::centredRight);
    }
}
} // namespace cv::pluginCore
