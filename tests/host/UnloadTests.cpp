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

    /** Opens the editor in a host into which `library` is loaded first; that leaves a file at the path that `variable`
        holds once it has had its effect.
    */
    void openEditorWith (const char* library, const char* variable) const
    {
        const auto sign = scratch.getFile ("sign");

        RenderProcess::Options options;
        options.environment["HOME"] = home.getFolder().getFullPathName().toStdString();
        options.environment["LD_PRELOAD"] = library;
        options.environment[variable] = sign.getFullPathName().toStdString();
        options.environment["ASAN_OPTIONS"] =
            (juce::SystemStats::getEnvironmentVariable ("ASAN_OPTIONS", {}) + ":verify_asan_link_order=0")
                .toStdString();

        RenderProcess::runWell ({ input.getFullPathName(), "--editor-png",
                                  scratch.getFile ("editor.png").getFullPathName(), "--tail", "1" },
                                options);
        EXPECT_TRUE (sign.existsAsFile());
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

    openEditorWith (VARLO_STUCK_NAME_LOOKUP, "STUCK_LOOKUP_SIGN");
}

/** On a machine without it nobody asks for a new version, and nothing else is different. */
TEST_F (UnloadTest, HostLivesWithoutTheNetworkLibrary)
{
    openEditorWith (VARLO_MISSING_CURL, "MISSING_CURL_SIGN");
}
} // namespace
} // namespace cv::render
