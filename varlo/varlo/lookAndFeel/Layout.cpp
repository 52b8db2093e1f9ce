#include "varlo/lookAndFeel/Layout.h"

namespace cv::varlo
{
namespace
{
int roundedPortion (float ratio, int length) noexcept
{
    return juce::roundToInt (ratio * (float) length);
}
} // namespace

HeaderButtonAreas layOutHeaderButtons (int width, int height) noexcept
{
    const juce::Rectangle<int> header (width, height);
    auto area = header.reduced (header.proportionOfWidth (0.03f), 0);
    const auto infoWidth = area.proportionOfWidth (0.2f);
    const auto logo = area.removeFromLeft (infoWidth / 2);

    // In a header that is high for its width nothing may be left for the button.
    auto info = area.removeFromRight (infoWidth);
    info.removeFromLeft (5 * header.proportionOfHeight (0.2f));

    return { .logo = logo, .info = info };
}

juce::Slider::SliderLayout layOutSlider (int width, int height, bool isRotary) noexcept
{
    juce::Rectangle<int> area (width, height);

    if (isRotary)
    {
        const auto boxWidth = roundedPortion (0.8f, width);
        const auto boxHeight = roundedPortion (0.25f, height);
        return { area, area.withSizeKeepingCentre (boxWidth, boxHeight) };
    }

    const auto textBox = area.removeFromRight (roundedPortion (0.2f, width));
    return { area, textBox };
}
} // namespace cv::varlo
