#pragma once

#include <juce_graphics/juce_graphics.h>

#include <array>

namespace cv::soak
{
/** Where the editor's controls are at one size of it, in pixels from its top left corner. Places are worked out
    here once more instead of being taken from the editor, as a user's eye would.
*/
struct EditorPlaces
{
    EditorPlaces (int width, int height);

    static constexpr double aspectRatio = 1.818;
    static constexpr size_t numKnobs = 6;

    juce::Rectangle<int> previousPreset;
    juce::Rectangle<int> presetsButton;
    juce::Rectangle<int> nextPreset;
    juce::Rectangle<int> spectrogram;
    juce::Rectangle<int> tapButton;

    /** What turns, without caption and value. From left to right. */
    std::array<juce::Rectangle<int>, numKnobs> knobs;

    /** The corner that resizes. */
    juce::Rectangle<int> corner;

private:
    void placeHeader (int width, int height);
    void placeRow (int width, int height, int headerHeight);
};
} // namespace cv::soak
