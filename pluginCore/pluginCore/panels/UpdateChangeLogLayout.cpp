#include "pluginCore/panels/UpdateChangeLogLayout.h"

namespace cv::pluginCore
{
juce::Rectangle<int> getChangeLogContentArea (juce::Rectangle<int> box)
{
    constexpr auto marginProportion = 0.08f;

    return box.reduced (
        juce::jmin (box.proportionOfHeight (marginProportion), box.proportionOfWidth (marginProportion)));
}

int getChangeLogRowHeight (juce::Rectangle<int> contentArea)
{
    return contentArea.proportionOfHeight (0.12f);
}

ChangeLogLayout layOutChangeLog (juce::Rectangle<int> contentArea, int bestCloseWidth, int bestDownloadWidth)
{
    const auto rowHeight = getChangeLogRowHeight (contentArea);
    const auto gap = rowHeight / 3;
    auto remaining = contentArea;

    ChangeLogLayout layout;
    layout.title = remaining.removeFromTop (rowHeight);
    remaining.removeFromTop (gap);

    auto buttons = remaining.removeFromBottom (rowHeight);
    layout.closeButton = buttons.removeFromRight (bestCloseWidth);
    buttons.removeFromRight (rowHeight);
    layout.downloadButton = buttons.removeFromRight (bestDownloadWidth);

    remaining.removeFromBottom (gap);
    layout.textPanel = remaining;
    return layout;
}
} // namespace cv::pluginCore
