#include "varlo/dsp/OutputGuard.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
TEST (OutputGuard, LimitsToFourAndSilencesWhatIsNotFinite)
{
    constexpr auto nan = std::numeric_limits<float>::quiet_NaN();
    constexpr auto infinity = std::numeric_limits<float>::infinity();

    const std::vector<std::pair<float, float>> cases { { 5.0f, 4.0f },   { -5.0f, -4.0f },   { 3.999f, 3.999f },
                                                       { -4.0f, -4.0f }, { 0.25f, 0.25f },   { nan, 0.0f },
                                                       { -nan, 0.0f },   { infinity, 0.0f }, { -infinity, 0.0f } };

    for (const auto& [input, output] : cases)
    {
        // In each channel for itself.
        EXPECT_EQ (guardOutput ({ input, 0.5f }).left(), output) << input;
        EXPECT_EQ (guardOutput ({ input, 0.5f }).right(), 0.5f) << input;
        EXPECT_EQ (guardOutput ({ 0.5f, input }).right(), output) << input;
        EXPECT_EQ (guardOutput ({ 0.5f, input }).left(), 0.5f) << input;
    }
}
} // namespace
} // namespace cv::varlo
