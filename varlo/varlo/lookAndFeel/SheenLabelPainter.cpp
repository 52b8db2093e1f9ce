#include "varlo/lookAndFeel/SheenLabelPainter.h"

#include "pluginCore/lookAndFeel/Markers.h"
#include "varlo/lookAndFeel/ControlState.h"
#include "varlo/lookAndFeel/Markers.h"

namespace cv::varlo
{
namespace
{
/** Leaves the colour of the label's outline set. */
void paintText (juce::Graphics& g, const juce::Label& label, const juce::Font& font, juce::Rectangle<int> textArea)
{
    const auto alpha = getControlAlpha (label.isEnabled());
    const auto colour = label.findColour (juce::Label::textColourId).withMultipliedAlpha (alpha);
    const auto brightProportion = (double) label.getProperties()[properties::brightTextProportion];
    const auto area = textArea.toFloat();

    g.setGradientFill (makeSheen (colour, area.getY(), area.getBottom(), brightProportion));
    g.setFont (font);
    g.drawFittedText (label.getText(), textArea, label.getJustificationType(),
                      getSheenLabelLines (textArea.getHeight(), font.getHeight()), label.getMinimumHorizontalScale());

    g.setColour (label.findColour (juce::Label::outlineColourId).withMultipliedAlpha (alpha));
}
} // namespace

float getSheenLabelFontHeight (const juce::Label& label)
{
    const auto height = (float) label.getHeight();

    if (label.findParentComponentOfClass<juce::Slider>() != nullptr)
        return 0.75f * height;

    return (pluginCore::liesInMarked (label, properties::halfHeightLabels) ? 0.5f : 0.8f) * height;
}

int getSheenLabelLines (int textAreaHeight, float fontHeight) noexcept
{
    return juce::jmax (1, (int) ((float) textAreaHeight / fontHeight));
}

juce::ColourGradient makeSheen (juce::Colour colour, float top, float bottom, double brightProportion)
{
    const auto bright = colour.brighter (0.1f);

    auto sheen = juce::ColourGradient::vertical (bright, top, colour.darker (0.6f), bottom);

    if (brightProportion < 1.0)
        sheen.addColour (juce::jmax (brightProportion, 0.0), bright);

    return sheen;
}

void paintSheenLabel (juce::Graphics& g,
                      const juce::Label& label,
                      const juce::Font& font,
                      juce::Rectangle<int> textArea)
{
    constexpr auto outlineThickness = 1.0f;

    g.fillAll (label.findColour (juce::Label::backgroundColourId));

    if (! label.isBeingEdited())
        paintText (g, label, font, textArea);
    else if (label.isEnabled())
        g.setColour (label.findColour (juce::Label::outlineColourId));

    g.drawRect (label.getLocalBounds().toFloat(), outlineThickness);
}
} // namespace cv::varlo
