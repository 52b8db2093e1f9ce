#pragma once

#include "varlo/spectrum/SpectrogramImage.h"

/** The product's colours. What a component asks its look-and-feel for is set from them there. */
namespace cv::varlo::palette
{
inline const juce::Colour panel { 0xff151515 };
inline const juce::Colour aboutPanel { 0xff111111 };
inline const juce::Colour menu { 0xfa141414 };

inline const juce::Colour text { 0xffcfcfcf };
inline const juce::Colour textSelection { 0x805eb9aa };
inline const juce::Colour textOnAccent { 0xff0f0f0f };
inline const juce::Colour accent { spectrogramPalette[6] };

inline const juce::Colour led =
    juce::Colour (spectrogramPalette[8]).interpolatedWith (juce::Colour (spectrogramPalette[7]), 0.5f);
inline const juce::Colour blankSpectrogram { spectrogramPalette.front() };

/** From the top to the bottom of what is let into the panel: the LED's rim and the spectrogram's frame. */
inline const juce::Colour rimTop { 0xff171717 };
inline const juce::Colour rimBottom { 0xff191919 };
} // namespace cv::varlo::palette
