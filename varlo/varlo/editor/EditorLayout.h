#pragma once

#include "varlo/parameters/Parameters.h"

#include <array>

namespace cv::varlo
{
struct EditorKnob
{
    const char* parameterId;
    const char* caption;
    bool beginsGroup;
};

/** The knobs from left to right, with a gap before each group. */
inline constexpr std::array editorKnobs {
    EditorKnob { .parameterId = parameterIds::delay, .caption = "Delay", .beginsGroup = true },
    EditorKnob { .parameterId = parameterIds::feedback, .caption = "Feedback", .beginsGroup = false },
    EditorKnob { .parameterId = parameterIds::degrade, .caption = "Degrade", .beginsGroup = true },
    EditorKnob { .parameterId = parameterIds::lowpass, .caption = "Lowpass", .beginsGroup = true },
    EditorKnob { .parameterId = parameterIds::resonance, .caption = "Reso", .beginsGroup = false },
    EditorKnob { .parameterId = parameterIds::mix, .caption = "Mix", .beginsGroup = true },
};

/** Where the editor's children lie: the header, the spectrogram below it, and a row with the tap button, the LED
    and the knobs.
*/
struct EditorLayout
{
    juce::Rectangle<int> header;
    juce::Rectangle<int> spectrogram;
    juce::Rectangle<int> tapButton;
    juce::Rectangle<int> led;
    std::array<juce::Rectangle<int>, editorKnobs.size()> knobs; // in the order of editorKnobs
};

/** For an editor of this size in logical pixels, neither below 0. Where the space runs out, the rightmost knobs get
    none; no area has a negative size.
*/
EditorLayout layOutEditor (int width, int height);
} // namespace cv::varlo
