#include "varlo/dsp/Frame.h"

#include <gmock/gmock.h>
#include <juce_core/juce_core.h>

namespace cv::varlo
{
namespace
{
constexpr auto nan = std::numeric_limits<float>::quiet_NaN();
constexpr auto infinity = std::numeric_limits<float>::infinity();

/** Numbers of all sizes and signs, now and then one that is none. */
float makeNumber (juce::Random& random)
{
    constexpr std::array special { 0.0f, -0.0f, 1.0f, -1.0f, infinity, -infinity, nan, 3.4e38f, 1.2e-38f };

    if (random.nextInt (4) == 0)
        return special[(size_t) random.nextInt ((int) special.size())];

    return (random.nextFloat() - 0.5f) * std::pow (10.0f, (float) random.nextInt (20) - 10.0f);
}

/** Bit for bit, but that one NaN is as good as another. */
bool isSame (float a, float b)
{
    return (std::isnan (a) && std::isnan (b)) || std::bit_cast<std::uint32_t> (a) == std::bit_cast<std::uint32_t> (b);
}

/** The lanes that this compiler takes, and the plain ones that every compiler can take. */
template <typename Lanes>
class FrameTest : public testing::Test
{
};

using AllLanes = testing::Types<NativeLanes, PlainLanes>;
TYPED_TEST_SUITE (FrameTest, AllLanes);

TYPED_TEST (FrameTest, GivesInEachChannelWhatFloatsGive)
{
    using Frame = FrameOf<TypeParam>;
    juce::Random random (1);

    for (int i = 0; i < 100000; ++i)
    {
        const std::array a { makeNumber (random), makeNumber (random) };
        const std::array b { makeNumber (random), makeNumber (random) };
        const Frame x (a[0], a[1]);
        const Frame y (b[0], b[1]);

        const auto expectSame = [&] (const char* operation, Frame result, const std::function<float (float, float)>& f)
        {
            ASSERT_PRED2 (isSame, result.left(), f (a[0], b[0])) << operation << ' ' << a[0] << ' ' << b[0];
            ASSERT_PRED2 (isSame, result.right(), f (a[1], b[1])) << operation << ' ' << a[1] << ' ' << b[1];
        };

        expectSame ("+", x + y, std::plus<>());
        expectSame ("-", x - y, std::minus<>());
        expectSame ("*", x * y, std::multiplies<>());
        expectSame ("max", max (x, y), [] (float p, float q) { return p < q ? q : p; });
        expectSame ("min", min (x, y), [] (float p, float q) { return q < p ? q : p; });
        expectSame ("abs", abs (x), [] (float p, float) { return std::abs (p); });
        expectSame ("finiteOrZero", finiteOrZero (x), [] (float p, float) { return std::isfinite (p) ? p : 0.0f; });
        ASSERT_EQ (areBothBelow (x, y), a[0] < b[0] && a[1] < b[1]);
    }
}

TYPED_TEST (FrameTest, StartsAsSilenceAndTakesOneValueForBothChannels)
{
    using Frame = FrameOf<TypeParam>;
    EXPECT_EQ (Frame().left(), 0.0f);
    EXPECT_EQ (Frame().right(), 0.0f);
    EXPECT_EQ (Frame (2.0f).left(), 2.0f);
    EXPECT_EQ (Frame (2.0f).right(), 2.0f);
}
} // namespace
} // namespace cv::varlo
