#include "pluginCore/parameters/NumberRange.h"

#include "support/Signals.h"

#include <gtest/gtest.h>

namespace cv::pluginCore
{
namespace
{
constexpr auto nan = std::numeric_limits<float>::quiet_NaN();
constexpr auto infinity = std::numeric_limits<float>::infinity();

TEST (NumberRange, ConvertsEveryNumberAsJucesRangeDoes)
{
    for (const auto skew : { 1.0f, 0.30091232f })
    {
        const juce::NormalisableRange<float> expected (1.0f, 10000.0f, 0.0f, skew);
        const auto range = makeNumberRange (1.0f, 10000.0f, skew);
        EXPECT_EQ (range.start, expected.start);
        EXPECT_EQ (range.end, expected.end);
        EXPECT_EQ (range.interval, expected.interval);
        EXPECT_EQ (range.skew, expected.skew);
        EXPECT_FALSE (range.symmetricSkew);

        for (const auto position : test::noise (10000, 1))
        {
            const auto proportion = std::abs (position);
            ASSERT_EQ (range.convertFrom0to1 (proportion), expected.convertFrom0to1 (proportion)) << position;

            const auto value = expected.convertFrom0to1 (proportion);
            ASSERT_EQ (range.convertTo0to1 (value), expected.convertTo0to1 (value)) << value;
        }
    }
}

TEST (NumberRange, LimitsEveryNumberAsJucesRangeDoes)
{
    const juce::NormalisableRange<float> expected (0.0f, 100.0f);
    const auto range = makeNumberRange (0.0f, 100.0f);

    for (const auto value : { -infinity, -1.0f, -0.0f, 0.0f, 1.0e-45f, 50.0f, 100.0f, 100.00001f, 1.0e38f, infinity })
    {
        EXPECT_EQ (range.snapToLegalValue (value), expected.snapToLegalValue (value)) << value;
        EXPECT_FALSE (std::signbit (range.snapToLegalValue (value))) << value;
    }
}

TEST (NumberRange, TakesNoNumberForTheNearestToZero)
{
    EXPECT_EQ (makeNumberRange (0.0f, 100.0f).snapToLegalValue (nan), 0.0f);
    EXPECT_EQ (makeNumberRange (20.0f, 20000.0f, 0.3f).snapToLegalValue (nan), 20.0f);
    EXPECT_EQ (makeNumberRange (-20.0f, -10.0f).snapToLegalValue (-nan), -10.0f);
    EXPECT_EQ (makeNumberRange (-20.0f, 10.0f).snapToLegalValue (nan), 0.0f);
}
} // namespace
} // namespace cv::pluginCore
