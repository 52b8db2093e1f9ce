#pragma once

#include "varlo/dsp/Frame.h"

namespace cv::varlo
{
/** What leaves the plug-in stays within plus and minus this level, about 12 dB over full scale. */
constexpr float maxOutputLevel = 4.0f;

/** Turns NaN and infinities into silence and limits all else to maxOutputLevel, so that a loop gone
    wrong never reaches a listener's ears at full force.
*/
inline Frame guardOutput (Frame output) noexcept
{
    return max (min (finiteOrZero (output), Frame (maxOutputLevel)), Frame (-maxOutputLevel));
}
} // namespace cv::varlo
