#include "panels/UpdateChangeLogLayout.h"

namespace cv::pluginCore
{
namespace
{
int scaled (float proportion, int size)
{
    return static_cast<int> (proportion * static_cast<float> (size));
}
} // namespace

juce::Rectangle<int> getChangeLogBox (juce::Rectangle<float> proportions, int width, int height)
{
    return { scaled (proportions.getX(), width), scaled (proportions.getY(), height),
             scaled (proportions.getWidth(), width), scaled (proportions.getHeight(), height) };
}

juce::Rectangle<int> getChangeLogContentArea (juce::Rectangle<int> box)
{
    constexpr auto marginProportion = 0.08f;

    const auto margin =
        juce::jmin (scaled (marginProportion, box.getHeight()), scaled (marginProportion, box.getWidth()));

    return { box.getX() + margin, box.getY() + margin, juce::jmax (box.getWidth() - 2 * margin, 0),
             juce::jmax (box.getHeight() - 2 * margin, 0) };
}

int getChangeLogRowHeight (juce::Rectangle<int> contentArea)
{
    return scaled (0.12f, contentArea.getHeight());
}

ChangeLogLayout layOutChangeLog (juce::Rectangle<int> contentArea, int bestCloseWidth, int bestDownloadWidth)
{
    const auto rowHeight = getChangeLogRowHeight (contentArea);
    const auto gap = rowHeight / 3;
    auto remaining = contentArea;

    // Rectangle's removeFrom... take no more than there is.
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
