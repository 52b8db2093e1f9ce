#pragma once

#include <juce_graphics/juce_graphics.h>

#include <algorithm>
#include <cmath>

namespace cv::test
{
/** The greatest step of brightness from a pixel to its right neighbour. What was drawn small and enlarged has smaller
    ones.
*/
inline float getGreatestStep (const juce::Image& image, juce::Rectangle<int> area)
{
    auto greatest = 0.0f;

    for (auto y = area.getY(); y < area.getBottom(); ++y)
        for (auto x = area.getX(); x + 1 < area.getRight(); ++x)
            greatest = std::max (greatest, std::abs (image.getPixelAt (x, y).getBrightness()
                                                     - image.getPixelAt (x + 1, y).getBrightness()));

    return greatest;
}

/** Whether the text in an area of a picture was drawn in its pixels, and not small and then enlarged. `unscaled` is the
    same window at scale 1, where the text is in `area`.
*/
inline bool isSharp (const juce::Image& picture, const juce::Image& unscaled, juce::Rectangle<int> area, float scale)
{
    constexpr auto sharper = 1.15f; // 1.3 times at a scale of 1.25, twice at 2

    const auto enlarged = unscaled.rescaled (juce::roundToInt (scale * (float) unscaled.getWidth()),
                                             juce::roundToInt (scale * (float) unscaled.getHeight()));
    const auto pixels = (area.toFloat() * scale).toNearestInt();
    return getGreatestStep (picture, pixels) > sharper * getGreatestStep (enlarged, pixels);
}
} // namespace cv::test
