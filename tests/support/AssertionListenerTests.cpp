#include <gtest/gtest-spi.h>
#include <juce_core/juce_core.h>

namespace cv::test
{
namespace
{
TEST (AssertionListener, FailsTheTestInWhichAnAssertionFires)
{
#if JUCE_DEBUG
    EXPECT_NONFATAL_FAILURE (jassertfalse, "JUCE Assertion failure in AssertionListenerTests.cpp");
#else
    GTEST_SKIP() << "Assertions are compiled into debug builds only.";
#endif
}
} // namespace
} // namespace cv::test
