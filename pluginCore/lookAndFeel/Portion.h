#pragma once

namespace cv::pluginCore
{
/** Part of a length in whole units: the ratio in single precision, the fraction cut off. Layouts share this, so that
    they round alike. Any thread.
*/
constexpr int portion (float ratio, int length) noexcept
{
    return static_cast<int> (ratio * static_cast<float> (length));
}
} // namespace cv::pluginCore
