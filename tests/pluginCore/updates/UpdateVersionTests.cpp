#include "pluginCore/updates/UpdateChecker.h"

#include <gtest/gtest.h>

namespace cv::pluginCore
{
namespace
{
TEST (UpdateVersion, IsReadFromText)
{
    struct Version
    {
        const char* text;
        int major, minor, patch;
        bool isBeta;
        int beta;
    };

    constexpr auto max = std::numeric_limits<int>::max();
    constexpr auto min = std::numeric_limits<int>::min();

    for (const auto& expected : {
             Version { "1.0.0", 1, 0, 0, false, 99 },
             Version { "12.34.56", 12, 34, 56, false, 99 },
             Version { " \t1.2.3\r\n", 1, 2, 3, false, 99 },
             Version { "1.2.3 beta 4", 1, 2, 3, true, 4 },
             Version { "1.2.3 BETA 4", 1, 2, 3, true, 4 },
             Version { "1.2.3Beta4", 1, 2, 3, true, 4 },
             Version { "1.2.3 beta", 1, 2, 3, true, 0 },
             Version { "1.2.3 beta 4 beta 5", 1, 2, 3, true, 4 },
             Version { "beta 4", 0, 0, 0, true, 4 },
             Version { "1.2", 1, 2, 0, false, 99 },
             Version { "1", 1, 0, 0, false, 99 },
             Version { "", 0, 0, 0, false, 99 },
             Version { "..3", 0, 0, 3, false, 99 },
             Version { "1.2.3.4", 1, 2, 3, false, 99 },
             Version { "1a.b2. 3", 1, 0, 3, false, 99 },
             Version { "v1.2.3", 0, 2, 3, false, 99 },
             Version { "1.\"2.3\".4", 1, 0, 4, false, 99 },
             Version { "-1.+2.3", -1, 2, 3, false, 99 },
             Version { "99999999999.-99999999999.3", max, min, 3, false, 99 },
             Version { "1.2.3 beta 99999999999999999999", 1, 2, 3, true, max },
         })
    {
        SCOPED_TRACE (expected.text);
        auto major = -7, minor = -7, patch = -7, beta = -7;
        auto isBeta = ! expected.isBeta;
        UpdateChecker::parseVersion (expected.text, major, minor, patch, isBeta, beta);

        EXPECT_EQ (major, expected.major);
        EXPECT_EQ (minor, expected.minor);
        EXPECT_EQ (patch, expected.patch);
        EXPECT_EQ (isBeta, expected.isBeta);
        EXPECT_EQ (beta, expected.beta);
    }
}

TEST (UpdateVersion, IsScoredByTightDecimalWeights)
{
    EXPECT_EQ (UpdateChecker::getVersionScore (1, 0, 0, 99), 10099);
    EXPECT_EQ (UpdateChecker::getVersionScore (1, 0, 1, 2), 10102);
    EXPECT_EQ (UpdateChecker::getVersionScore (1, 0, 0, 5), 10005);
    EXPECT_EQ (UpdateChecker::getVersionScore (1, 0, 0, 3), 10003);
    EXPECT_EQ (UpdateChecker::getVersionScore (0, 10, 0, 99), UpdateChecker::getVersionScore (1, 0, 0, 99));
    EXPECT_EQ (UpdateChecker::getVersionScore (0, 0, 10, 99), UpdateChecker::getVersionScore (0, 1, 0, 99));

    constexpr auto max = std::numeric_limits<int>::max();
    EXPECT_EQ (UpdateChecker::getVersionScore (max, max, max, max), (juce::int64) max * 11101);
}
} // namespace
} // namespace cv::pluginCore
