#include "pluginCore/updates/BackgroundThreads.h"
#include "pluginCore/updates/UpdateChecker.h"
#include "support/HttpServer.h"
#include "support/MessageLoop.h"
#include "support/StuckAddresses.h"

#include <gtest/gtest.h>

#include <optional>

namespace cv::pluginCore
{
namespace
{
using cv::test::HttpReply;
using cv::test::HttpServer;
using cv::test::runMessageLoopFor;
using cv::test::runMessageLoopUntil;
using cv::test::StuckNameLookup;
using cv::test::UnacceptingServer;

/** A fraction of the time for which the servers here let a job wait, and enough on a busy machine. */
constexpr double promptMilliseconds = 5000.0;

/** Counts calls beyond the life of the checker. */
class CallCounter final : public UpdateChecker::Listener
{
public:
    void versionCheckFinished (UpdateChecker&, bool, juce::int64) override { ++numCalls; }

    void changeLogReady (UpdateChecker&, const juce::String&) override { ++numCalls; }

    int numCalls = 0;
};

/** Takes checkers away in the middle of a job. All of it with both jobs. */
class UpdateCheckerEndTest : public testing::TestWithParam<bool>
{
protected:
    UpdateCheckerEndTest()
    {
        checker.emplace ("1.0.0");
        checker->addListener (&counter);
        checker->changeLogMode = GetParam();
    }

    void setReply (const HttpReply& reply)
    {
        server.setReply ("/lastVersion.php", reply);
        server.setReply ("/changeLogMac.php", reply);
    }

    void start (const juce::URL& url)
    {
        checker->url = url;
        ASSERT_TRUE (checker->startThread (juce::Thread::Priority::normal));
    }

    void start (const HttpReply& reply)
    {
        setReply (reply);
        start (server.getUrl ({}));
    }

    void startAndWaitForRequest (const HttpReply& reply)
    {
        start (reply);
        ASSERT_TRUE (runMessageLoopUntil ([this] { return server.getRequests().size() == 1; }));
    }

    /** Deletes the checker, which has to be quick and the end of all calls. */
    void expectPromptEnd()
    {
        const auto start = juce::Time::getMillisecondCounterHiRes();
        checker.reset();
        EXPECT_LT (juce::Time::getMillisecondCounterHiRes() - start, promptMilliseconds);

        runMessageLoopFor (20);
        EXPECT_EQ (counter.numCalls, 0);
    }

    void expectQuietBackground()
    {
        EXPECT_TRUE (runMessageLoopUntil ([] { return BackgroundThreads::getNumRunning() == 0; }));
        EXPECT_TRUE (runMessageLoopUntil ([this] { return server.getNumOpenConnections() == 0; }));
    }

    HttpServer server;
    CallCounter counter;
    std::optional<UpdateChecker> checker;
};

INSTANTIATE_TEST_SUITE_P (Jobs,
                          UpdateCheckerEndTest,
                          testing::Bool(),
                          [] (const auto& job) { return job.param ? "ChangeLog" : "VersionCheck"; });

TEST_P (UpdateCheckerEndTest, BeforeAnyJob)
{
    expectPromptEnd();
}

TEST_P (UpdateCheckerEndTest, InANameLookup)
{
    {
        const StuckNameLookup lookup;
        start (juce::URL ("http://" + juce::String (StuckNameLookup::host)));
        ASSERT_TRUE (runMessageLoopUntil ([&] { return lookup.getNumWaiting() == 1; }));
        expectPromptEnd();
        EXPECT_EQ (lookup.getNumWaiting(), 1);
    }

    expectQuietBackground();
}

TEST_P (UpdateCheckerEndTest, WhileConnecting)
{
    const UnacceptingServer unacceptingServer;
    start (unacceptingServer.getUrl());
    runMessageLoopFor (400);
    ASSERT_TRUE (checker->isThreadRunning());

    expectPromptEnd();
    expectQuietBackground();
}

TEST_P (UpdateCheckerEndTest, WhileTheServerIsSilent)
{
    HttpReply reply;
    reply.manner = HttpReply::Manner::silent;
    startAndWaitForRequest (reply);

    expectPromptEnd();
    expectQuietBackground();
}

TEST_P (UpdateCheckerEndTest, WhileAByteComesASecond)
{
    auto reply = HttpReply::page ("macVersion:1.0.1;");
    reply.manner = HttpReply::Manner::byteASecond;
    startAndWaitForRequest (reply);
    runMessageLoopFor (200);

    expectPromptEnd();
    expectQuietBackground();
}

TEST_P (UpdateCheckerEndTest, WhileMuchIsComing)
{
    auto reply = HttpReply::page (juce::String::repeatedString ("0123456789abcde\n", 4096));
    reply.manner = HttpReply::Manner::endless;
    startAndWaitForRequest (reply);

    expectPromptEnd();
    expectQuietBackground();
}

TEST_P (UpdateCheckerEndTest, StoppedJobsSayNothing)
{
    HttpReply reply;
    reply.manner = HttpReply::Manner::silent;
    startAndWaitForRequest (reply);
    EXPECT_TRUE (checker->stopThread (5000));
    runMessageLoopFor (50);
    EXPECT_EQ (counter.numCalls, 0);

    start (HttpReply::page ("macVersion:1.0.1;"));
    EXPECT_TRUE (runMessageLoopUntil ([this] { return counter.numCalls == 1; }));
}

TEST_P (UpdateCheckerEndTest, BetweenTheJobAndItsCall)
{
    start (HttpReply::page ("macVersion:1.0.1;"));
    ASSERT_TRUE (checker->waitForThreadToExit (5000));
    EXPECT_EQ (server.getRequests().size(), 1);

    expectPromptEnd();
    expectQuietBackground();
}

TEST_P (UpdateCheckerEndTest, AfterTheListenerHasLeft)
{
    start (HttpReply::page ("macVersion:1.0.1;"));
    checker->removeListener (&counter);
    ASSERT_TRUE (checker->waitForThreadToExit (5000));
    runMessageLoopFor (20);
    EXPECT_EQ (counter.numCalls, 0);

    expectPromptEnd();
}

TEST_P (UpdateCheckerEndTest, AtAnyMoment)
{
    setReply (HttpReply::page ("macVersion:1.0.1;"));

    for (auto milliseconds = 0; milliseconds < 20; milliseconds += 2)
    {
        start (server.getUrl ({}));
        juce::Thread::sleep (GetParam() ? milliseconds : 240 + milliseconds);
        expectPromptEnd();

        checker.emplace ("1.0.0");
        checker->addListener (&counter);
        checker->changeLogMode = GetParam();
    }

    expectQuietBackground();
}

/** The connections that a server gets of a checker that goes after so many milliseconds; none where a busy machine
    has let it live for longer than it waits.
*/
std::optional<int> countConnectionsOfBriefChecker (int milliseconds)
{
    constexpr auto shortestWaitMilliseconds = 240.0;

    const HttpServer server;
    const auto start = juce::Time::getMillisecondCounterHiRes();

    {
        UpdateChecker checker ("1.0.0");
        checker.url = server.getUrl ({});
        checker.startThread (juce::Thread::Priority::normal);
        juce::Thread::sleep (milliseconds);
    }

    if (juce::Time::getMillisecondCounterHiRes() - start > shortestWaitMilliseconds)
        return {};

    runMessageLoopFor (300);
    return server.getNumConnections();
}

TEST (UpdateChecker, MakesNoRequestWhenItGoesWithinAQuarterOfASecond)
{
    constexpr auto maxTries = 100;

    for (const auto milliseconds : { 0, 5, 50, 100 })
    {
        std::optional<int> numConnections;

        for (auto i = 0; i < maxTries && ! numConnections.has_value(); ++i)
            numConnections = countConnectionsOfBriefChecker (milliseconds);

        EXPECT_EQ (numConnections, 0) << milliseconds;
    }
}
} // namespace
} // namespace cv::pluginCore
