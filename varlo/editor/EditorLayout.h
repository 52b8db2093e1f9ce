#pragma once

#include <juce_graphics/juce_graphics.h>

namespace cv::varlo
{
/** Where the editor's children lie: the header, the spectrogram below it, and a row with the tap button, the LED
    and the knobs in the groups Delay and Feedback; Degrade; Lowpass and Reso; Mix.
*/
struct EditorLayout
{
    juce::Rectangle<int> header;
    juce::Rectangle<int> spectrogram;
    juce::Rectangle<int> tapButton;
    juce::Rectangle<int> led;
    juce::Rectangle<int> delay;
    juce::Rectangle<int> feedback;
    juce::Rectangle<int> degrade;
    juce::Rectangle<int> lowpass;
    juce::Rectangle<int> resonance;
    juce::Rectangle<int> mix;
};

/** For an editor of this size in pixels, neither below 0. Where the space runs out, the rightmost knobs get
    none; no area has a negative size.
*/
EditorLayout layOutEditor (int width, int height);
} // namespace cv::varlo
