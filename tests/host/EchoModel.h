#pragma once

#include <vector>

namespace cv::varlo
{
/** What the wet path's low-pass makes of a signal at rest: two poles with R2 = 1 / q, at the lowest q of
    0.1 that Resonance 0 gives. Double precision; frequencies in Hz.
*/
std::vector<double> wetLowpass (const std::vector<double>& input, double cutoff, double sampleRate);

/** What the four-pole low-pass of the feedback loop makes of a signal at rest, its direct part
    included. Double precision; frequencies in Hz.
*/
std::vector<double> feedbackLadder (const std::vector<double>& input, double cutoff, double sampleRate);
} // namespace cv::varlo
