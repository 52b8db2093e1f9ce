#include "support/RenderProcess.h"
#include "support/Signals.h"
#include "tools/render/RenderTestSupport.h"

namespace cv::render
{
namespace
{
class UnloadTest : public RenderTest
{
protected:
    void SetUp() override
    {
        if (juce::SystemStats::getEnvironmentVariable ("DISPLAY", {}).isEmpty())
            GTEST_SKIP() << "no display";
    }

    const ScratchFolder home;
};

/** A host that quits while the editor's question for a new version waits for a name server that never answers.
    The look-up doesn't end, so neither would a host that waited for it.
*/
TEST_F (UnloadTest, HostQuitsWhileANameIsLookedUp)
{
#if JUCE_DEBUG
    GTEST_SKIP() << "JUCE takes for leaked what the look-up still holds";
#endif

    const auto sign = scratch.getFile ("looked up");

    RenderProcess::Options options;
    options.environment["HOME"] = home.getFolder().getFullPathName().toStdString();
    options.environment["LD_PRELOAD"] = VARLO_STUCK_NAME_LOOKUP;
    options.environment["STUCK_LOOKUP_SIGN"] = sign.getFullPathName().toStdString();
    options.environment["ASAN_OPTIONS"] =
        (juce::SystemStats::getEnvironmentVariable ("ASAN_OPTIONS", {}) + ":verify_asan_link_order=0").toStdString();

    RenderProcess::runWell (
        { input.getFullPathName(), "--editor-png", scratch.getFile ("editor.png").getFullPathName(), "--tail", "1" },
        options);
    EXPECT_TRUE (sign.existsAsFile());
}
} // namespace
} // namespace cv::render
