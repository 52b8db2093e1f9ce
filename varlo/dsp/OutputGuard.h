#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

namespace cv::varlo
{
/** What leaves the plug-in stays within plus and minus this level, about 12 dB over full scale. */
constexpr float maxOutputLevel = 4.0f;

/** Turns NaN and infinities into silence and limits all else to maxOutputLevel, so that a loop gone
    wrong never reaches a listener's ears at full force. In place; audio thread.
*/
void guardOutput (juce::AudioBuffer<float>&) noexcept;
} // namespace cv::varlo
