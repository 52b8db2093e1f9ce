#include "soak/EditorPlaces.h"

namespace cv::soak
{
namespace
{
/** Whole pixels, the fraction cut off. */
int portion (double ratio, int length)
{
    return (int) (ratio * length);
}
} // namespace

EditorPlaces::EditorPlaces (int width, int height)
{
    const auto headerHeight = portion (0.12, height);
    const auto cornerSize = juce::roundToInt (0.05 * height);

    placeHeader (width, headerHeight);
    placeRow (width, height, headerHeight);
    corner = { width - cornerSize, height - cornerSize, cornerSize, cornerSize };
}

void EditorPlaces::placeHeader (int width, int height)
{
    juce::Rectangle<int> bar (width, height);
    bar.reduce (portion (0.2, width), portion (0.15, height));
    bar.reduce (portion (0.23, bar.getWidth()), portion (0.1, bar.getHeight()));

    previousPreset = bar.removeFromLeft (bar.getHeight());
    nextPreset = bar.removeFromRight (bar.getHeight());
    presetsButton = bar;
}

void EditorPlaces::placeRow (int width, int height, int headerHeight)
{
    const auto margin = portion (0.05, height);
    const auto gap = margin / 4;
    const auto below = height - headerHeight;
    const auto spectrogramHeight = portion (0.7, below);
    spectrogram = { margin, headerHeight, width - 2 * margin, spectrogramHeight - margin / 2 };

    juce::Rectangle<int> row (margin + gap, headerHeight + spectrogramHeight + gap, width - 2 * (margin + gap),
                              below - spectrogramHeight - 2 * gap);
    const auto tapWidth = row.getHeight() / 2;
    const auto tapHeight = tapWidth / 2;
    tapButton = { row.getX() + tapWidth / 5,
                  row.getY() + (row.getHeight() - tapHeight) / 2 - juce::roundToInt (tapWidth / 3.5), tapWidth,
                  tapHeight };

    row.removeFromLeft (tapWidth);
    const auto gaps = portion (1.0 / 7.0, row.getWidth());
    const auto knobWidth = (row.getWidth() - gaps / 2 * 2) / (int) numKnobs;
    const auto isFirstOfGroup = std::array { true, false, true, true, false, true };

    for (size_t i = 0; i < numKnobs; ++i)
    {
        if (isFirstOfGroup[i])
            row.removeFromLeft (gaps / 4);

        knobs[i] = row.removeFromLeft (knobWidth);
        knobs[i].setHeight (row.getHeight() / 2);
    }
}
} // namespace cv::soak
