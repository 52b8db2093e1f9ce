#pragma once

#include <juce_graphics/juce_graphics.h>

#include <span>

namespace cv::varlo
{
/** What is as quiet as this, or quieter, has the palette's first colour. */
inline constexpr float silenceDb = -100.0f;

/** The colours of a spectrogram from -100 dB, and all below, to 0 dB, and all above. */
inline constexpr std::array<juce::uint32, 11> spectrogramPalette { 0xff060606, 0xff440154, 0xff472777, 0xff3e4989,
                                                                   0xff30678d, 0xff25828e, 0xff1e9d88, 0xff35b778,
                                                                   0xff6dce58, 0xffb5dd2b, 0xfffde724 };

/** A blank image for five seconds of frames at this sample rate in hertz: a column for each frame and a row for
    each bin up to 22050 Hz or half the rate, whichever is lower. The rate is above 0.
*/
juce::Image createSpectrogramImage (double sampleRate);

/** The colour of a bin, between two neighbours of the palette. A magnitude of 1 is full scale; what is no number
    counts as silence.
*/
juce::Colour getSpectrogramColour (float magnitude) noexcept;

/** Moves an image's content one column to the left, which drops the oldest frame, and draws a frame of
    magnitudes in the last column: bin 0 at the bottom, bins that have no row left out. An ARGB image whose
    pixels nobody else holds takes this without allocating.
*/
void appendSpectrogramColumn (juce::Image&, std::span<const float> magnitudes);
} // namespace cv::varlo
