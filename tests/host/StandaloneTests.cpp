#include "support/Alarms.h"
#include "support/DisplayWindows.h"
#include "support/Program.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>

namespace cv::varlo
{
namespace
{
/** The standalone, on the display and in a home that is new, without a sound card. */
class StandaloneTest : public ::testing::Test
{
protected:
    StandaloneTest()
    {
        // Without its set-up the sound system knows no device.
        setenv ("ALSA_CONFIG_PATH", "/dev/null", 1);
    }

    ~StandaloneTest() override { unsetenv ("ALSA_CONFIG_PATH"); }

    void SetUp() override
    {
        if (! windows.isConnected())
            GTEST_SKIP() << "no display";
    }

    /** The program's window once it can be seen; 0 if that doesn't come. */
    test::DisplayWindows::Window waitForWindow (test::Program& program) const
    {
        const auto start = juce::Time::getMillisecondCounter();

        while (program.isRunning() && juce::Time::getMillisecondCounter() - start < (juce::uint32) limitMilliseconds)
        {
            if (const auto window = windows.find ("Varlo"))
                return window;

            juce::Thread::sleep (20);
        }

        return 0;
    }

    static void expectGoodEnd (test::Program& program)
    {
        EXPECT_EQ (program.waitForEnd (limitMilliseconds), std::optional (0)) << program.getText();
        test::expectNoAlarm (program.getText());
    }

    static constexpr int limitMilliseconds = 60000;

    const test::TemporaryHome home;
    const test::DisplayWindows windows;
    const juce::File executable { VARLO_STANDALONE };
};

TEST_F (StandaloneTest, OpensItsWindowAndEndsWhenItIsClosed)
{
    test::Program program (executable, home.getFolder());
    const auto window = waitForWindow (program);
    ASSERT_NE (window, 0u) << program.getText();

    // JUCE's program loses a request that comes while it is still starting, right after its window.
    for (auto i = 0; i < 30 && ! program.waitForEnd (1000); ++i)
        windows.requestClose (window);

    expectGoodEnd (program);
    EXPECT_EQ (windows.find ("Varlo"), 0u);
    EXPECT_TRUE (home.getFile (".config/Varlo.settings").existsAsFile());
}

/** A session that ends, a terminal that is closed, a key. */
TEST_F (StandaloneTest, KeepsItsStateWhenASignalEndsIt)
{
    const auto settings = home.getFile (".config/Varlo.settings");

    for (const auto signal : { SIGINT, SIGTERM, SIGHUP })
    {
        SCOPED_TRACE (signal);
        settings.deleteFile();
        test::Program program (executable, home.getFolder());
        ASSERT_NE (waitForWindow (program), 0u) << program.getText();

        program.sendSignal (signal);
        expectGoodEnd (program);
        EXPECT_TRUE (settings.loadFileAsString().contains ("filterState")) << settings.loadFileAsString();
    }
}

/** The environment variable `name` with another value, or without one, for as long as this lives. */
class Variable
{
public:
    Variable (const char* nameToUse, const char* value)
        : name (nameToUse)
        , former (juce::SystemStats::getEnvironmentVariable (name, {}))
    {
        if (value != nullptr)
            setenv (name, value, 1);
        else
            unsetenv (name);
    }

    ~Variable() { setenv (name, former.toRawUTF8(), 1); }

private:
    const char* const name;
    const juce::String former;
};

/** What a program has said, without what JUCE says of itself in debug builds. */
juce::String getOwnText (const test::Program& program)
{
    return juce::String (program.getText()).replace ("JUCE v8.0.6\n", "");
}

TEST_F (StandaloneTest, SaysThatThereIsNoDisplay)
{
    {
        const Variable display ("DISPLAY", nullptr);
        test::Program program (executable, home.getFolder());
        EXPECT_EQ (program.waitForEnd (limitMilliseconds), std::optional (1));
        EXPECT_EQ (getOwnText (program), "varlo: no display: DISPLAY is not set\n");
    }

    const Variable display ("DISPLAY", ":9999");
    test::Program program (executable, home.getFolder());
    EXPECT_EQ (program.waitForEnd (limitMilliseconds), std::optional (1));
    EXPECT_EQ (getOwnText (program), "varlo: no display: there is no X server at \":9999\"\n");
}
} // namespace
} // namespace cv::varlo
