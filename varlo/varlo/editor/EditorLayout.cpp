#include "varlo/editor/EditorLayout.h"

namespace cv::varlo
{
namespace
{
using Area = juce::Rectangle<int>;

/** Two buttons' heights share the column, as high as the row: the tap button above its middle, the LED below. */
void layOutTapColumn (EditorLayout& layout, Area column)
{
    // Where the row is narrower than that, the button keeps its size.
    const auto buttonWidth = column.proportionOfHeight (0.5f);
    const auto ledSize = buttonWidth / 5;
    const auto rise = juce::roundToInt ((float) buttonWidth / 3.5f);

    layout.tapButton = column.withSizeKeepingCentre (buttonWidth, buttonWidth / 2).translated (ledSize, -rise);
    layout.led = layout.tapButton.translated (0, layout.tapButton.getHeight()).withSizeKeepingCentre (ledSize, ledSize);
}

/** Knobs of equal width with a gap before each group, from left to right as far as the row reaches. */
void layOutKnobs (EditorLayout& layout, Area row)
{
    constexpr auto numKnobs = (float) editorKnobs.size();

    // As much as one knob more would take is left for the gaps.
    const auto widthForGaps = row.proportionOfWidth (1.0f / (numKnobs + 1.0f));
    const auto knobWidth = row.reduced (widthForGaps / 2, 0).proportionOfWidth (1.0f / numKnobs);

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
    Area area (width, height);
    const auto margin = area.proportionOfHeight (0.05f);
    const auto quarterMargin = margin / 4;

    EditorLayout layout;
    layout.header = area.removeFromTop (area.proportionOfHeight (0.12f));
    area = area.reduced (margin, 0);

    layout.spectrogram = area.removeFromTop (area.proportionOfHeight (0.7));
    layout.spectrogram.removeFromBottom (margin / 2);

    area.removeFromBottom (quarterMargin);
    area.removeFromTop (quarterMargin);
    auto row = area.reduced (quarterMargin, 0);

    layOutTapColumn (layout, row.removeFromLeft (row.proportionOfHeight (0.5f)));
    layOutKnobs (layout, row);

    return layout;
}
} // namespace cv::varlo
