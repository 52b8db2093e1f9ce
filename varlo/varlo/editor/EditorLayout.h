#pragma once

#include "varlo/parameters/Parameters.h"

#include <array>

namespace cv::varlo
{
struct EditorKnob
{
    const char* parameterId;
    const char* caption;
    const char* help; // a text to be translated
    bool beginsGroup;
};

/** The knobs from left to right, with a gap before each group. */
inline constexpr std::array editorKnobs {
    EditorKnob { .parameterId = parameterIds::delay,
                 .caption = "Delay",
                 .help = "Time from each echo to the next",
                 .beginsGroup = true },
    EditorKnob { .parameterId = parameterIds::feedback,
                 .caption = "Feedback",
                 .help = "How much of each echo comes back as the next",
                 .beginsGroup = false },
    EditorKnob { .parameterId = parameterIds::degrade,
                 .caption = "Degrade",
                 .help = "Downsample : sample rate reduction",
                 .beginsGroup = true },
    EditorKnob { .parameterId = parameterIds::lowpass,
                 .caption = "Lowpass",
                 .help = "Adjust the filter's cutoff frequency",
                 .beginsGroup = true },
    EditorKnob { .parameterId = parameterIds::resonance,
                 .caption = "Reso",
                 .help = "Adjust the filter's resonance",
                 .beginsGroup = false },
    EditorKnob { .parameterId = parameterIds::mix,
                 .caption = "Mix",
                 .help = "Amount of wet signal in the output mix",
                 .beginsGroup = true },
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
