#include "pluginCore/presetsBar/PresetsBarLayout.h"

namespace cv::pluginCore
{
PresetsBarLayout layOutPresetsBar (int width, int height) noexcept
{
    juce::Rectangle<int> bar (width, height);
    const auto previousButton = bar.removeFromLeft (height).reduced (0, height / 6);
    const auto nextButton = bar.removeFromRight (height);

    return { .previousButton = previousButton, .presetsButton = bar, .nextButton = nextButton };
}
} // namespace cv::pluginCore
