#include "varlo/lookAndFeel/SliderLayout.h"

namespace cv::varlo
{
namespace
{
int roundedPortion (float ratio, int length) noexcept
{
    return juce::roundToInt (ratio * (float) length);
}
} // namespace

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
