#include "pluginCore/updates/UpdateChecker.h"

#include "support/HttpServer.h"
#include "support/MessageLoop.h"

#include <gmock/gmock.h>

namespace cv::pluginCore
{
namespace
{
using cv::test::HttpReply;
using cv::test::HttpServer;
using cv::test::runMessageLoopUntil;

const juce::String base = "/releaseNotes/varlo";
const juce::String versionPath = base + "/lastVersion.php";
const juce::String changeLogPath = base + "/changeLogMac.php";

/** Writes down what a checker says. */
class Recorder : public UpdateChecker::Listener
{
public:
    explicit Recorder (UpdateChecker& checkerToHear) : checker (checkerToHear) { checker.addListener (this); }

    ~Recorder() override { checker.removeListener (this); }

    void versionCheckFinished (UpdateChecker& source,
                               bool updateAvailable,
                               juce::int64 releaseTimeMilliseconds) override
    {
        EXPECT_EQ (&source, &checker);
        EXPECT_TRUE (juce::MessageManager::existsAndIsCurrentThread());
        updates.push_back (updateAvailable);
        releaseTimes.push_back (releaseTimeMilliseconds);
    }

    void changeLogReady (UpdateChecker& source, const juce::String& text) override
    {
        EXPECT_EQ (&source, &checker);
        EXPECT_TRUE (juce::MessageManager::existsAndIsCurrentThread());
        EXPECT_FALSE (source.changeLogMode);
        changeLogs.add (text);
    }

    int getNumCalls() const { return (int) updates.size() + changeLogs.size(); }

    std::vector<bool> updates;
    std::vector<juce::int64> releaseTimes;
    juce::StringArray changeLogs;

protected:
    UpdateChecker& checker;
};

class UpdateCheckerTest : public testing::Test
{
protected:
    /** Runs one job to its end. */
    void run (UpdateChecker& target, const Recorder& hearer)
    {
        const auto numCalls = hearer.getNumCalls();
        target.waitForThreadToExit (5000);
        ASSERT_TRUE (target.startThread (juce::Thread::Priority::normal));
        ASSERT_TRUE (runMessageLoopUntil ([&] { return hearer.getNumCalls() > numCalls; }));
    }

    void checkVersion() { run (checker, recorder); }

    juce::String fetchChangeLog (const HttpReply& reply)
    {
        server.setReply (changeLogPath, reply);
        checker.changeLogMode = true;
        run (checker, recorder);
        return recorder.changeLogs[recorder.changeLogs.size() - 1];
    }

    static UpdateChecker& withUrl (UpdateChecker& target, const juce::URL& url)
    {
        target.url = url;
        return target;
    }

    HttpServer server;
    UpdateChecker checker { "1.0.0" };
    Recorder recorder { withUrl (checker, server.getUrl (base)) };
};

/** A running version, what the server says to it, and what is to come of it. */
struct Answer
{
    const char* running;
    const char* body;
    bool isUpdate;
    juce::int64 releaseTimeMilliseconds = 0;
};

const Answer answers[] = {
    { "1.0.0", "macVersion:1.0.1;macReleaseDate:1742850000000;", true, 1742850000000 },
    { "1.0.0", "macVersion:1.0.0;macReleaseDate:1742850000000;", false, 1742850000000 },
    { "1.0.0", "macVersion:0.9.9", false },
    { "1.0.0", "macVersion:1.0.1 beta 2", true },
    { "1.0.0", "macVersion:1.0.0 beta 5", false },
    { "1.0.0 beta 3", "macVersion:1.0.0", true },
    { "1.0.0 beta 3", "macVersion:1.0.0 beta 4", true },
    { "1.0.0 beta 3", "macVersion:1.0.0 BETA 3", false },
    { "1.0.0", "macVersion:0.10.0", false },
    { "0.10.0", "macVersion:1.0.0", false },
    { "0.9.0", "macVersion:0.10.0", true },

    // keys
    { "1.0.0", "MACVERSION:1.0.1;MacReleaseDate:5", true, 5 },
    { "1.0.0", "macVersion:1.0.1;macReleaseDate:5;\n", true, 5 },
    { "1.0.0", "\nmacVersion:1.0.1", false },
    { "1.0.0", "macVersion :1.0.1", false },
    { "1.0.0", "winVersion:9.9.9;macVersion:1.0.0;version:9.9.9", false },
    { "1.0.0", "macVersion:9.9.9;macVersion:1.0.0", false },
    { "1.0.0", "macVersion:1.0.0;MACVERSION:9.9.9", true },
    { "1.0.0", "macVersion:9.9.9;macVersion", false },
    { "1.0.0", "other:\";macVersion:9.9.9;\";macReleaseDate:5", false, 5 },
    { "1.0.0", "macReleaseDate:5", false, 5 },

    // values
    { "1.0.0", "macVersion: 1.0.1 ;macReleaseDate: 7 days", true, 7 },
    { "1.0.0", "macVersion:1.0.1:9;macReleaseDate:12:30", true, 12 },
    { "1.0.0", "macVersion:\"1.0.1\";macReleaseDate:\"5\"", false },
    { "1.0.0", "macVersion:two;macReleaseDate:today", false },
    { "1.0.0", "macVersion:;macReleaseDate:", false },
    { "1.0.0", "macVersion:99999999999999999999.0.0;macReleaseDate:99999999999999999999", true,
      std::numeric_limits<juce::int64>::max() },
    { "1.0.0", "macVersion:-99999999999999999999.0.0;macReleaseDate:-5", false, -5 },

    // no answer at all
    { "1.0.0", "", false },
    { "1.0.0", ";;;:;:;", false },
    { "1.0.0", "<html><body>We're sorry; the page you're looking for is not available: 404</body></html>", false },
    { "0.0.0", "", false },
    { "0.0.0 beta 1", "", true },
};

TEST_F (UpdateCheckerTest, HasANameForDebuggers)
{
    EXPECT_EQ (checker.getThreadName(), "Web Updater");
}

TEST_F (UpdateCheckerTest, ComparesTheVersionOfTheAnswer)
{
    std::vector<std::unique_ptr<UpdateChecker>> checkers;
    std::vector<std::unique_ptr<Recorder>> recorders;

    for (const auto& answer : answers)
    {
        const auto folder = "/answer" + juce::String (checkers.size());
        server.setReply (folder + "/lastVersion.php", HttpReply::page (answer.body));

        checkers.push_back (std::make_unique<UpdateChecker> (answer.running));
        recorders.push_back (std::make_unique<Recorder> (*checkers.back()));
        withUrl (*checkers.back(), server.getUrl (folder)).startThread (juce::Thread::Priority::normal);
    }

    for (size_t i = 0; i < checkers.size(); ++i)
    {
        SCOPED_TRACE (juce::String (answers[i].running) + " against " + answers[i].body);
        ASSERT_TRUE (runMessageLoopUntil ([&] { return recorders[i]->getNumCalls() > 0; }));
        EXPECT_THAT (recorders[i]->updates, testing::ElementsAre (answers[i].isUpdate));
        EXPECT_THAT (recorders[i]->releaseTimes, testing::ElementsAre (answers[i].releaseTimeMilliseconds));
    }
}

TEST_F (UpdateCheckerTest, AsksForThePlainPagesAndNothingElse)
{
    checkVersion();
    fetchChangeLog (HttpReply::page ("text"));

    const auto requests = server.getRequests();
    ASSERT_EQ (requests.size(), 2);
    EXPECT_TRUE (requests[0].startsWith ("GET /releaseNotes/varlo/lastVersion.php HTTP/1.1\r\n"));
    EXPECT_TRUE (requests[1].startsWith ("GET /releaseNotes/varlo/changeLogMac.php HTTP/1.1\r\n"));
}

TEST_F (UpdateCheckerTest, WaitsAQuarterOfASecondBeforeAVersionCheck)
{
    const auto start = juce::Time::getMillisecondCounterHiRes();
    checker.startThread (juce::Thread::Priority::normal);
    ASSERT_TRUE (runMessageLoopUntil ([this] { return server.getNumConnections() > 0; }));
    EXPECT_GE (juce::Time::getMillisecondCounterHiRes() - start, 245.0);
}

TEST_F (UpdateCheckerTest, FailedChecksAreFinishedChecks)
{
    server.setReply (versionPath, HttpReply::redirect (versionPath));
    checkVersion();

    HttpReply closed;
    closed.manner = HttpReply::Manner::closed;
    server.setReply (versionPath, closed);
    checkVersion();

    checker.url = juce::URL ("http://unknown.example" + base);
    checkVersion();

    checker.url = juce::URL();
    checkVersion();

    EXPECT_THAT (recorder.updates, testing::ElementsAre (false, false, false, false));
    EXPECT_THAT (recorder.releaseTimes, testing::Each (0));
}

TEST_F (UpdateCheckerTest, AFailedCheckKeepsTheEarlierAnswer)
{
    server.setReply (versionPath, HttpReply::page ("macVersion:1.0.1;macReleaseDate:5;"));
    checkVersion();

    server.setReply (versionPath, HttpReply::redirect (versionPath));
    checkVersion();

    EXPECT_THAT (recorder.updates, testing::ElementsAre (true, true));
    EXPECT_THAT (recorder.releaseTimes, testing::ElementsAre (5, 5));
}

TEST_F (UpdateCheckerTest, AnotherAnswerReplacesTheEarlierOne)
{
    server.setReply (versionPath, HttpReply::page ("macVersion:1.0.1;macReleaseDate:5;"));
    checkVersion();

    server.setReply (versionPath, HttpReply::page ("nothing to see"));
    checkVersion();

    EXPECT_THAT (recorder.updates, testing::ElementsAre (true, false));
    EXPECT_THAT (recorder.releaseTimes, testing::ElementsAre (5, 0));
}

TEST_F (UpdateCheckerTest, ChangeLogIsTheBodyAsItStands)
{
    EXPECT_EQ (fetchChangeLog (HttpReply::page ("1.0.1;\n - \"louder\"\n")), "1.0.1;\n - \"louder\"\n");
    EXPECT_EQ (fetchChangeLog (HttpReply::page ("")), "");
    EXPECT_TRUE (recorder.updates.empty());

    const auto longText = juce::String::repeatedString ("0123456789abcde\n", 256 * 1024 / 16);
    EXPECT_EQ (fetchChangeLog (HttpReply::page (longText)), longText);
}

TEST_F (UpdateCheckerTest, AChangeLogThatIsTooLongIsAFailedFetch)
{
    EXPECT_EQ (fetchChangeLog (HttpReply::page ("text")), "text");
    EXPECT_EQ (fetchChangeLog (HttpReply::page (juce::String::repeatedString ("\n", 256 * 1024 + 1))), "text");
}

TEST_F (UpdateCheckerTest, AVersionThatIsTooLongIsAFailedCheck)
{
    const juce::String version ("macVersion:9.0.0;");

    for (const auto* filling : { ";", ".", ":", "\"", "x" })
    {
        const auto longest = juce::String::repeatedString (filling, 4 * 1024 - version.length());
        server.setReply (versionPath, HttpReply::page (version + longest));
        checkVersion();
        EXPECT_TRUE (recorder.updates.back()) << filling;

        UpdateChecker other ("1.0.0");
        const Recorder hearer (withUrl (other, server.getUrl (base)));
        server.setReply (versionPath, HttpReply::page (version + longest + filling));
        run (other, hearer);
        EXPECT_FALSE (hearer.updates.back()) << filling;
    }
}

TEST_F (UpdateCheckerTest, NotFoundPageIsNoChangeLog)
{
    for (const auto* page : { "<p>Sorry, the page you're looking for is not available.</p>",
                              "THE PAGE YOU'RE LOOKING FOR IS NOT AVAILABLE" })
    {
        EXPECT_EQ (fetchChangeLog (HttpReply::page ("text")), "text");
        EXPECT_EQ (fetchChangeLog (HttpReply::page (page)), "");
    }
}

TEST_F (UpdateCheckerTest, AFailedFetchKeepsTheEarlierChangeLog)
{
    EXPECT_EQ (fetchChangeLog (HttpReply::redirect (changeLogPath)), "");
    EXPECT_EQ (fetchChangeLog (HttpReply::page ("text")), "text");
    EXPECT_EQ (fetchChangeLog (HttpReply::redirect (changeLogPath)), "text");
}

/** Goes on from an update to its change log, as an editor does. */
class FollowingRecorder final : public Recorder
{
public:
    using Recorder::Recorder;

    void versionCheckFinished (UpdateChecker& source,
                               bool updateAvailable,
                               juce::int64 releaseTimeMilliseconds) override
    {
        Recorder::versionCheckFinished (source, updateAvailable, releaseTimeMilliseconds);
        source.waitForThreadToExit (5000);
        source.changeLogMode = true;
        EXPECT_TRUE (source.startThread (juce::Thread::Priority::normal));
    }
};

TEST_F (UpdateCheckerTest, ChangeLogCanBeFetchedFromTheCall)
{
    server.setReply (versionPath, HttpReply::page ("macVersion:1.0.1"));
    server.setReply (changeLogPath, HttpReply::page ("text"));

    const FollowingRecorder follower (checker);
    checkVersion();

    ASSERT_TRUE (runMessageLoopUntil ([&] { return ! follower.changeLogs.isEmpty(); }));
    EXPECT_EQ (follower.changeLogs[0], "text");
    EXPECT_EQ (follower.getNumCalls(), 2);
}

/** Takes itself off the list in the call. */
class LeavingRecorder final : public Recorder
{
public:
    using Recorder::Recorder;

    void versionCheckFinished (UpdateChecker& source,
                               bool updateAvailable,
                               juce::int64 releaseTimeMilliseconds) override
    {
        Recorder::versionCheckFinished (source, updateAvailable, releaseTimeMilliseconds);
        source.removeListener (this);
    }
};

TEST_F (UpdateCheckerTest, ListenersMayLeaveInTheCall)
{
    const LeavingRecorder leaver (checker);
    const Recorder last (checker);
    checkVersion();
    checkVersion();

    EXPECT_EQ (leaver.getNumCalls(), 1);
    EXPECT_EQ (recorder.getNumCalls(), 2);
    EXPECT_EQ (last.getNumCalls(), 2);
}

TEST_F (UpdateCheckerTest, TheMessageLoopRunsOnMeanwhile)
{
    HttpReply late = HttpReply::page ("macVersion:1.0.1");
    late.delayMilliseconds = 500;
    server.setReply (versionPath, late);

    // A loop that waits for the answer turns once or twice, a free one some hundred times.
    auto numTurns = 0;
    checker.startThread (juce::Thread::Priority::normal);

    ASSERT_TRUE (runMessageLoopUntil (
        [&]
        {
            ++numTurns;
            return recorder.getNumCalls() > 0;
        }));

    EXPECT_GT (numTurns, 10);
}
} // namespace
} // namespace cv::pluginCore
