#include "tools/render/RenderTestSupport.h"

#include <csignal>

namespace cv::render
{
namespace
{
/** The program as it is built for systems with neither POSIX nor X11, and run on this one. */
class RenderElsewhere : public RenderTest
{
protected:
    RenderElsewhere() { options.program = VARLO_RENDER_ELSEWHERE; }

    RenderProcess::Options options;
};

TEST_F (RenderElsewhere, GivesTheSameFile)
{
    const juce::StringArray arguments { input.getFullPathName(), "-o", output.getFullPathName(), "--set", "Delay=20" };
    juce::MemoryBlock here, there;

    RenderProcess::runWell (arguments);
    ASSERT_TRUE (output.loadFileAsData (here));
    ASSERT_TRUE (output.deleteFile());

    EXPECT_TRUE (RenderProcess::runWell (arguments, options).output.contains ("times real time"));
    ASSERT_TRUE (output.loadFileAsData (there));
    EXPECT_EQ (there, here);
}

TEST_F (RenderElsewhere, SaysInOneLineThatThereAreNoPictures)
{
    const auto picture = scratch.getFile ("editor.png").getFullPathName();

    for (const juce::StringArray& arguments :
         { juce::StringArray { "--check-display" },
           juce::StringArray { input.getFullPathName(), "-o", output.getFullPathName(), "--editor-png", picture } })
    {
        const auto result = RenderProcess::run (arguments, options);
        EXPECT_EQ (result.exitCode, 1);
        EXPECT_EQ (result.output, juce::String());
        EXPECT_EQ (result.errors, "varlo-render: no display: pictures of the editor are taken from an X server, which "
                                  "there is only on Linux\n");
        EXPECT_EQ (scratch.getContents(), juce::StringArray ({ "input.wav" }));
    }
}

TEST_F (RenderElsewhere, AnInterruptionLeavesNothing)
{
    const auto before = scratch.getContents();
    RenderProcess process (longRender, options);
    waitForRender (before);
    process.sendSignal (SIGINT);
    const auto result = process.wait();
    EXPECT_EQ (result.exitCode, 130);
    EXPECT_EQ (result.errors, "varlo-render: interrupted; nothing was written\n");
    EXPECT_EQ (scratch.getContents(), before);
}
} // namespace
} // namespace cv::render
