#include "lookAndFeel/HeaderLayout.h"

#include "lookAndFeel/Portion.h"

namespace cv::varlo
{
using pluginCore::portion;

HeaderButtonAreas layOutHeaderButtons (int width, int height) noexcept
{
    const auto margin = portion (0.03f, width);
    const auto innerWidth = juce::jmax (width - 2 * margin, 0);
    const auto fullHeight = juce::jmax (height, 0);

    const auto infoSpace = portion (0.2f, innerWidth);
    const auto logoWidth = juce::jmin (infoSpace / 2, innerWidth);
    const auto infoWidth = juce::jmin (innerWidth - logoWidth, infoSpace);

    // In a header that is high for its width nothing may be left for the button.
    const auto trimmed = juce::jmin (5 * portion (0.2f, height), infoWidth);

    return { { margin, 0, logoWidth, fullHeight },
             { innerWidth + margin - infoWidth + trimmed, 0, infoWidth - trimmed, fullHeight } };
}
} // namespace cv::varlo
