#include "panels/UpdateChangeLogLayout.h"

#include "lookAndFeel/Portion.h"

namespace cv::pluginCore
{
juce::Rectangle<int> getChangeLogBox (juce::Rectangle<float> proportions, int width, int height)
{
    return { portion (proportions.getX(), width), portion (proportions.getY(), height),
             portion (proportions.getWidth(), width), portion (proportions.getHeight(), height) };
}

juce::Rectangle<int> getChangeLogContentArea (juce::Rectangle<int> box)
{
    constexpr auto marginProportion = 0.08f;

    const auto margin =
        juce::jmin (portion (marginProportion, box.getHeight()), portion (marginProportion, box.getWidth()));

    return { box.getX() + margin, box.getY() + margin, juce::jmax (box.getWidth() - 2 * margin, 0),
             juce::jmax (box.getHeight() - 2 * margin, 0) };
}

int getChangeLogRowHeight (juce::Rectangle<int> contentArea)
{
    return portion (0.12f, contentArea.getHeight());
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
