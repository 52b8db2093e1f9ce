#include "varlo/parameters/ValueText.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
juce::String textOf (const juce::AudioParameterFloatAttributes& attributes, float value)
{
    return attributes.getStringFromValueFunction() (value, 0);
}

TEST (ValueText, EachUnitHasItsSuffix)
{
    EXPECT_EQ (textOf (getFreqAttributes (0), 1234.56f), "1235 Hz");
    EXPECT_EQ (textOf (getTimeAttributes (1), 1234.56f), "1234.6 ms");
    EXPECT_EQ (textOf (getPercentAttributes (0), 49.6f), "50 %");
}

TEST (ValueText, WithoutDecimalsHalvesAreRoundedAwayFromZero)
{
    EXPECT_EQ (textOf (getPercentAttributes (0), 49.5f), "50 %");
    EXPECT_EQ (textOf (getPercentAttributes (0), 50.5f), "51 %");
    EXPECT_EQ (textOf (getPercentAttributes (0), -2.5f), "-3 %");
    EXPECT_EQ (textOf (getPercentAttributes (0), 0.0f), "0 %");
}

TEST (ValueText, MaximumLengthIsIgnored)
{
    EXPECT_EQ (getTimeAttributes (1).getStringFromValueFunction() (10000.0f, 3), "10000.0 ms");
}

TEST (ValueText, TextIsReadByJucesOwnRule)
{
    EXPECT_EQ (getFreqAttributes (0).getValueFromStringFunction(), nullptr);
    EXPECT_EQ (getTimeAttributes (1).getValueFromStringFunction(), nullptr);
    EXPECT_EQ (getPercentAttributes (0).getValueFromStringFunction(), nullptr);
}
} // namespace
} // namespace cv::varlo
