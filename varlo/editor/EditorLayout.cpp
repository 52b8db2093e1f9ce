#include "editor/EditorLayout.h"

#include "lookAndFeel/Portion.h"

namespace cv::varlo
{
namespace
{
using Area = juce::Rectangle<int>;
using pluginCore::portion;

/** Two buttons' heights share a column as high as the row: the tap button above its middle, the LED below. */
void layOutTapColumn (EditorLayout& layout, Area row, int columnWidth, int availableWidth)
{
    const auto buttonHeight = columnWidth / 2;
    const auto ledSize = columnWidth / 5;
    const auto rise = juce::roundToInt (static_cast<float> (-columnWidth) / 3.5f);

    const auto x = row.getX() + ledSize + (availableWidth - columnWidth) / 2;
    const auto y = row.getY() + (row.getHeight() - buttonHeight) / 2 + rise;

    layout.tapButton = { x, y, columnWidth, buttonHeight };
    layout.led = { x + (columnWidth - ledSize) / 2, y + buttonHeight + (buttonHeight - ledSize) / 2, ledSize, ledSize };
}

/** Knobs of equal width with a gap before each group, from left to right as far as the row reaches. */
void layOutKnobs (EditorLayout& layout, Area row)
{
    constexpr auto numKnobs = static_cast<float> (editorKnobs.size());

    // As much as one knob more would take is left for the gaps.
    const auto widthForGaps = portion (1.0f / (numKnobs + 1.0f), row.getWidth());
    const auto widthForKnobs = juce::jmax (row.getWidth() - (widthForGaps / 2) * 2, 0);
    const auto knobWidth = portion (1.0f / numKnobs, widthForKnobs);

    for (size_t i = 0; i < editorKnobs.size(); ++i)
    {
        if (editorKnobs[i].beginsGroup)
            row.removeFromLeft (widthForGaps / 4);

        layout.knobs[i] = row.removeFromLeft (knobWidth);
    }
}
} // namespace

EditorLayout layOutEditor (int width, int height)
{
    const auto margin = portion (0.05f, height);
    const auto quarterMargin = margin / 4;
    const auto innerWidth = juce::jmax (width - 2 * margin, 0);

    const auto headerHeight = juce::jmin (portion (0.12f, height), height);
    const auto heightBelowHeader = juce::jmax (height - headerHeight, 0);
    const auto upperHeight = juce::jmin (static_cast<int> (0.7 * heightBelowHeader), heightBelowHeader);

    EditorLayout layout;
    layout.header = { width, headerHeight };
    layout.spectrogram = { margin, headerHeight, innerWidth, juce::jmax (upperHeight - margin / 2, 0) };

    const auto lowerHeight = juce::jmax (heightBelowHeader - upperHeight - quarterMargin, 0);
    const auto rowTop = juce::jmin (quarterMargin, lowerHeight);
    Area row (margin + quarterMargin, headerHeight + upperHeight + rowTop,
              juce::jmax (innerWidth - 2 * quarterMargin, 0), lowerHeight - rowTop);

    const auto tapWidth = portion (0.5f, row.getHeight());
    layOutTapColumn (layout, row, tapWidth, juce::jmin (tapWidth, row.getWidth()));
    row.removeFromLeft (tapWidth);
    layOutKnobs (layout, row);

    return layout;
}
} // namespace cv::varlo
