#pragma once

namespace cv::varlo
{
/** What the knobs stand at for one block, in the units that they show. */
struct ParameterValues
{
    float mixPercent;
    float degradePercent;
    float delayMilliseconds;
    float feedbackPercent;
    float lowpassHz;
    float resonancePercent;
};
} // namespace cv::varlo
