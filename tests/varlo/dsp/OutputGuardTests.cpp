#include "dsp/OutputGuard.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
using testing::ElementsAre;

TEST (OutputGuard, LimitsToFourAndSilencesWhatIsNotFinite)
{
    constexpr auto nan = std::numeric_limits<float>::quiet_NaN();
    constexpr auto infinity = std::numeric_limits<float>::infinity();

    juce::AudioBuffer<float> buffer (2, 4);
    std::array<float, 4> left { 5.0f, -5.0f, 3.999f, -4.0f };
    std::array<float, 4> right { nan, infinity, -infinity, 0.25f };
    buffer.copyFrom (0, 0, left.data(), 4);
    buffer.copyFrom (1, 0, right.data(), 4);

    guardOutput (buffer);

    EXPECT_THAT (std::vector<float> (buffer.getReadPointer (0), buffer.getReadPointer (0) + 4),
                 ElementsAre (4.0f, -4.0f, 3.999f, -4.0f));
    EXPECT_THAT (std::vector<float> (buffer.getReadPointer (1), buffer.getReadPointer (1) + 4),
                 ElementsAre (0.0f, 0.0f, 0.0f, 0.25f));
}
} // namespace
} // namespace cv::varlo
