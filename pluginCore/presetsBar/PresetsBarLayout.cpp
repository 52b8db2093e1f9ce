#include "presetsBar/PresetsBarLayout.h"

namespace cv::pluginCore
{
PresetsBarLayout layOutPresetsBar (int width, int height) noexcept
{
    const auto previousWidth = juce::jmin (width, height);
    const auto inset = height / 6;
    const auto rest = width - previousWidth;
    const auto nextWidth = juce::jmin (rest, height);

    return { { 0, inset, previousWidth, height - 2 * inset },
             { previousWidth, 0, rest - nextWidth, height },
             { width - nextWidth, 0, nextWidth, height } };
}
} // namespace cv::pluginCore
