#include "varlo/lookAndFeel/HeaderLayout.h"

namespace cv::varlo
{
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
} // namespace cv::varlo
