#include "pluginCore/lookAndFeel/LabelPainter.h"

#include "pluginCore/lookAndFeel/Markers.h"

namespace cv::pluginCore
{
namespace
{
constexpr auto disabledAlpha = 0.4f;
constexpr auto outlineThickness = 1.0f;

float getFontHeightInSlider (const juce::Label& label, const juce::Slider& slider)
{
    const auto textIsTurned = (bool) label.getProperties()[properties::vertical];
    const auto lineHeight = (float) (textIsTurned ? label.getWidth() : label.getHeight());
    return lineHeight * (slider.isVertical() ? 0.6f : 0.9f);
}

void paintOutline (juce::Graphics& g, const juce::Label& label, float alpha)
{
    g.setColour (label.findColour (juce::Label::outlineColourId).withMultipliedAlpha (alpha));
    g.drawRect (label.getLocalBounds().toFloat(), outlineThickness);
}
} // namespace

float getLabelFontHeight (const juce::Label& label)
{
    const auto height = (float) label.getHeight();
    const auto fontScale = (float) label.getProperties()[properties::fontScale];

    if (fontScale > 0.0f)
        return fontScale * height;

    if (const auto* const slider = label.findParentComponentOfClass<juce::Slider>())
        return getFontHeightInSlider (label, *slider);

    return height * (liesInMarked (label, markers::smallLabels) ? 0.6f : 0.8f);
}

int getMaximumLabelLines (int textAreaHeight, float fontHeight) noexcept
{
    return juce::jmax (2, (int) ((float) textAreaHeight / fontHeight));
}

void paintLabel (juce::Graphics& g, const juce::Label& label, const juce::Font& font, juce::Rectangle<int> textArea)
{
    constexpr auto noSqueezing = 1.0f;

    g.fillAll (label.findColour (juce::Label::backgroundColourId));

    if (label.isBeingEdited())
    {
        if (label.isEnabled())
            paintOutline (g, label, 1.0f);

        return;
    }

    const auto alpha = label.isEnabled() ? 1.0f : disabledAlpha;
    g.setColour (label.findColour (juce::Label::textColourId).withMultipliedAlpha (alpha));
    g.setFont (font);
    g.drawFittedText (label.getText(), textArea, label.getJustificationType(),
                      getMaximumLabelLines (textArea.getHeight(), font.getHeight()), noSqueezing);

    paintOutline (g, label, alpha);
}
} // namespace cv::pluginCore
