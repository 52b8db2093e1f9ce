#pragma once

/** What saved projects, presets and hosts know the parameters by. */
namespace cv::varlo::parameterIds
{
inline constexpr auto mix = "mix";
inline constexpr auto degrade = "degrade";
inline constexpr auto delay = "delay";
inline constexpr auto feedback = "feedback";
inline constexpr auto lowpass = "lowpass";
inline constexpr auto resonance = "resonance";
} // namespace cv::varlo::parameterIds
