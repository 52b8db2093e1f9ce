#include "pluginCore/editor/PluginEditor.h"

#include "support/EditorWindow.h"
#include "support/FixedTime.h"
#include "support/HttpServer.h"
#include "support/Keys.h"
#include "support/MessageLoop.h"
#include "support/PresetSandbox.h"
#include "support/TemporaryHome.h"
#include "support/ThreadPriority.h"

#include <gmock/gmock.h>

namespace cv::pluginCore
{
namespace
{
using cv::test::EditorWindow;
using cv::test::FixedTime;
using cv::test::getStartPriority;
using cv::test::HttpReply;
using cv::test::HttpServer;
using cv::test::PresetSandbox;
using cv::test::runMessageLoopFor;
using cv::test::runMessageLoopUntil;
using cv::test::TemporaryHome;
using cv::test::TestProduct;

constexpr juce::int64 dayMilliseconds = 86400000;
constexpr juce::int64 weekMilliseconds = 7 * dayMilliseconds;

/** Longer than an editor waits before it asks anything. */
constexpr int askedByNowMilliseconds = 600;

juce::int64 now()
{
    return juce::Time::currentTimeMillis();
}

class PluginEditorUpdateTest : public testing::Test
{
protected:
    PluginEditorUpdateTest()
    {
        product.releaseNotesUrl = server.getUrl ("/notes").toString (false);
        announce ("9.0.0", now() - dayMilliseconds / 2);
        server.setReply ("/notes/changeLogMac.php", HttpReply::page ("It glides now."));
    }

    void announce (const juce::String& version, juce::int64 releaseTimeMilliseconds)
    {
        server.setReply ("/notes/lastVersion.php", HttpReply::page ("macVersion:" + version + ";macReleaseDate:"
                                                                    + juce::String (releaseTimeMilliseconds) + ";"));
    }

    juce::ValueTree& settings() { return product.getGlobalSettings().getValues(); }

    void set (const char* key, juce::int64 value) { settings().setProperty (key, juce::String (value), nullptr); }

    juce::int64 get (const char* key) { return settings()[key].toString().getLargeIntValue(); }

    int requestsAfterOpening()
    {
        const EditorWindow editor (product);
        runMessageLoopFor (askedByNowMilliseconds);
        return server.getRequests().size();
    }

    /** What the server does when it is asked for the version. */
    void answer (HttpReply::Manner manner)
    {
        HttpReply reply;
        reply.manner = manner;
        server.setReply ("/notes/lastVersion.php", reply);
    }

    static bool overlayAppears (const EditorWindow& editor)
    {
        return runMessageLoopUntil ([&] { return editor.find<UpdateChangeLogComponent>()->isVisible(); });
    }

    static juce::Button& findButton (const EditorWindow& editor, const juce::String& text)
    {
        for (auto* child : editor.find<UpdateChangeLogComponent>()->getChildren())
            if (auto* button = dynamic_cast<juce::TextButton*> (child);
                button != nullptr && button->getButtonText() == text)
                return *button;

        ADD_FAILURE() << text;
        return *editor.find<juce::TextButton>();
    }

    const TemporaryHome home;
    HttpServer server;
    const PresetSandbox sandbox;
    TestProduct product { sandbox.getLocations() };
};

TEST_F (PluginEditorUpdateTest, NewVersionIsShownFromEndToEnd)
{
    for (const auto* button : { "close", "proceed to download page" })
    {
        settings().removeAllProperties (nullptr);
        const auto before = now();
        const EditorWindow editor (product);
        ASSERT_TRUE (overlayAppears (editor));

        auto& overlay = *editor.find<UpdateChangeLogComponent>();
        EXPECT_EQ (overlay.getTextEditor().getText(), "It glides now.");
        EXPECT_EQ (overlay.getBounds(), editor->getLocalBounds());
        EXPECT_TRUE (overlay.isEnabled());
        EXPECT_FALSE (editor.find<PluginHeaderComponent>()->isEnabled());
        EXPECT_FALSE (editor.find<juce::ResizableCornerComponent>()->isEnabled());

        EXPECT_GE (get ("lastVersionCheck"), before);
        EXPECT_GE (get ("lastChangeLogTime"), before);
        EXPECT_LE (get ("lastVersionCheck"), now());

        findButton (editor, button).onClick();
        EXPECT_FALSE (overlay.isVisible());
        EXPECT_TRUE (editor.find<PluginHeaderComponent>()->isEnabled());
        EXPECT_TRUE (editor.find<juce::ResizableCornerComponent>()->isEnabled());
    }

    EXPECT_EQ (server.getRequests().size(), 4);
}

TEST_F (PluginEditorUpdateTest, EscapeClosesFromTheTextTooAndTheWindowKeepsTheKeyboard)
{
    const EditorWindow editor (product);
    ASSERT_TRUE (overlayAppears (editor));
    auto& overlay = *editor.find<UpdateChangeLogComponent>();
    ASSERT_TRUE (cv::test::giveKeyboardTo (overlay.getTextEditor()));

    EXPECT_FALSE (cv::test::pressKey (*editor, juce::KeyPress::spaceKey));
    EXPECT_TRUE (cv::test::pressKey (*editor, juce::KeyPress::escapeKey));
    EXPECT_FALSE (overlay.isVisible());
    EXPECT_TRUE (editor->hasKeyboardFocus (true));
}

TEST_F (PluginEditorUpdateTest, NothingNewOnlyMovesTheTimeOfTheCheck)
{
    announce ("2.3.4", now());
    const EditorWindow editor (product);

    EXPECT_TRUE (runMessageLoopUntil ([&] { return get ("lastVersionCheck") > 0; }));
    runMessageLoopFor (100);
    EXPECT_FALSE (editor.find<UpdateChangeLogComponent>()->isVisible());
    EXPECT_EQ (get ("lastChangeLogTime"), 0);
    EXPECT_EQ (server.getRequests().size(), 1);
}

TEST_F (PluginEditorUpdateTest, FailedCheckMovesTheTimeToo)
{
    answer (HttpReply::Manner::closed);
    const EditorWindow editor (product);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return get ("lastVersionCheck") > 0; }));
}

TEST_F (PluginEditorUpdateTest, EmptyChangeLogShowsNothing)
{
    server.setReply ("/notes/changeLogMac.php", HttpReply::page ({}));
    const EditorWindow editor (product);

    EXPECT_TRUE (runMessageLoopUntil ([&] { return server.getRequests().size() == 2; }));
    runMessageLoopFor (200);
    EXPECT_FALSE (editor.find<UpdateChangeLogComponent>()->isVisible());
}

TEST_F (PluginEditorUpdateTest, ChangeLogThatCannotBeShownShowsNothing)
{
    const EditorWindow editor (product);
    UpdateChecker checker ("1.0.0");
    editor->changeLogReady (checker, juce::String::charToString (0x301));
    EXPECT_FALSE (editor.find<UpdateChangeLogComponent>()->isVisible());
}

TEST_F (PluginEditorUpdateTest, NobodyNoticesALongChangeLog)
{
    server.setReply ("/notes/changeLogMac.php",
                     HttpReply::page (juce::String::repeatedString ("0123456789abcde\n", 256 * 1024 / 16)));
    const EditorWindow editor (product);
    ASSERT_TRUE (overlayAppears (editor));
    EXPECT_LT (editor.find<UpdateChangeLogComponent>()->getTextEditor().getTotalNumChars(), 5000);
}

TEST_F (PluginEditorUpdateTest, AsksAtMostOnceADay)
{
    set ("lastVersionCheck", now() - dayMilliseconds + 60000);
    EXPECT_EQ (requestsAfterOpening(), 0);

    set ("lastVersionCheck", now() - dayMilliseconds - 1);
    const EditorWindow editor (product);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return server.getRequests().size() > 0; }));
}

TEST_F (PluginEditorUpdateTest, AsksFromTheMillisecondOnWithWhichTheDayIsOver)
{
    const auto time = now();
    const FixedTime fixedTime (time);

    set ("lastVersionCheck", time - dayMilliseconds + 1);
    EXPECT_EQ (requestsAfterOpening(), 0);

    set ("lastVersionCheck", time - dayMilliseconds);
    const EditorWindow editor (product);
    EXPECT_TRUE (runMessageLoopUntil ([&] { return server.getRequests().size() > 0; }));
}

TEST_F (PluginEditorUpdateTest, AsksNothingBeforeACheckOfTheFuture)
{
    // A clock that was wrong once, and by how much nobody knows.
    for (const auto time : { now() + 1000, now() + dayMilliseconds, now() + 1000 * dayMilliseconds,
                             std::numeric_limits<juce::int64>::max() })
    {
        set ("lastVersionCheck", time);
        EXPECT_EQ (requestsAfterOpening(), 0) << time;
    }
}

TEST_F (PluginEditorUpdateTest, AsksOnlyWhereTheSettingIsOne)
{
    for (const auto* value : { "0", "true", "", "2" })
    {
        settings().setProperty ("checkForUpdates", value, nullptr);
        EXPECT_EQ (requestsAfterOpening(), 0) << value;
    }
}

TEST_F (PluginEditorUpdateTest, BetaAsksNothing)
{
    product.beta = true;
    EXPECT_EQ (requestsAfterOpening(), 0);
}

TEST_F (PluginEditorUpdateTest, EditorThatClosesAtOnceAsksNothing)
{
    constexpr auto maxTries = 100;
    constexpr auto shortestWaitMilliseconds = 240.0;

    // On a busy machine an editor may live for longer than it waits, and is right to ask then.
    for (auto i = 0; i < maxTries; ++i)
    {
        const HttpServer ownServer;
        product.releaseNotesUrl = ownServer.getUrl ("/notes").toString (false);
        settings().removeProperty ("lastVersionCheck", nullptr);
        const auto start = juce::Time::getMillisecondCounterHiRes();

        {
            const EditorWindow editor (product);
            runMessageLoopFor (150); // enough for a request to come, if there were one
        }

        if (juce::Time::getMillisecondCounterHiRes() - start > shortestWaitMilliseconds)
            continue;

        runMessageLoopFor (askedByNowMilliseconds);
        EXPECT_EQ (ownServer.getNumConnections(), 0);
        EXPECT_EQ (get ("lastVersionCheck"), 0);
        return;
    }

    FAIL() << "no editor closed at once";
}

TEST_F (PluginEditorUpdateTest, EditorClosesWhileACheckRuns)
{
    answer (HttpReply::Manner::silent);
    auto editor = std::make_unique<EditorWindow> (product);
    ASSERT_TRUE (runMessageLoopUntil ([&] { return server.getRequests().size() == 1; }));

    const auto start = now();
    editor.reset();
    EXPECT_LT (now() - start, 5000); // the server would keep it for ever
    runMessageLoopFor (100);
    EXPECT_EQ (get ("lastVersionCheck"), 0);
}

/** An editor that notes with which priority its checks run. */
class WatchedEditor final : public PluginEditor
{
public:
    explicit WatchedEditor (TestProduct& product) : PluginEditor (product) {}

    SizeLimits getEditorSizeLimits() const override { return { 100, 100, 10000, 10000 }; }

    double getEditorAspectRatio() const override { return 2.0; }

    void versionCheckFinished (UpdateChecker& checker,
                               bool updateAvailable,
                               juce::int64 releaseTimeMilliseconds) override
    {
        priorities.push_back (getStartPriority (checker).value_or (normal));
        PluginEditor::versionCheckFinished (checker, updateAvailable, releaseTimeMilliseconds);
        priorities.push_back (getStartPriority (checker).value_or (normal));
    }

    static constexpr auto normal = juce::Thread::Priority::normal;
    std::vector<juce::Thread::Priority> priorities;
};

TEST_F (PluginEditorUpdateTest, RequestsRunAtNormalPriority)
{
    WatchedEditor editor (product);
    editor.open();
    ASSERT_TRUE (runMessageLoopUntil ([&] { return server.getRequests().size() == 2; }));
    EXPECT_THAT (editor.priorities, testing::ElementsAre (WatchedEditor::normal, WatchedEditor::normal));
}

/** What a finished check of a given outcome leads to, without any server. */
class PluginEditorPolicyTest : public PluginEditorUpdateTest
{
protected:
    PluginEditorPolicyTest() { settings().setProperty ("checkForUpdates", "0", nullptr); }

    /** Whether the change log is asked for. */
    bool fetchesChangeLog (bool updateAvailable, juce::int64 releaseTimeMilliseconds, juce::int64 lastChangeLogTime)
    {
        set ("lastChangeLogTime", lastChangeLogTime);
        set ("lastVersionCheck", 0);
        const EditorWindow editor (product);
        UpdateChecker checker ("1.0.0");
        editor->versionCheckFinished (checker, updateAvailable, releaseTimeMilliseconds);
        EXPECT_GT (get ("lastVersionCheck"), 0);

        const auto fetches = checker.changeLogMode;
        EXPECT_EQ (get ("lastChangeLogTime") != lastChangeLogTime, fetches);
        return fetches;
    }
};

TEST_F (PluginEditorPolicyTest, ShowsANewVersionOnItsFirstDayAndThenOnceAWeek)
{
    const auto longAgo = now() - weekMilliseconds - 60000;
    const auto lately = now() - weekMilliseconds + 60000;
    const auto fresh = now() - dayMilliseconds + 60000;
    const auto stale = now() - dayMilliseconds - 60000;

    EXPECT_TRUE (fetchesChangeLog (true, fresh, lately));
    EXPECT_TRUE (fetchesChangeLog (true, stale, longAgo));
    EXPECT_TRUE (fetchesChangeLog (true, stale, 0));
    EXPECT_FALSE (fetchesChangeLog (true, stale, lately));
    EXPECT_FALSE (fetchesChangeLog (false, fresh, longAgo));
    EXPECT_TRUE (fetchesChangeLog (true, std::numeric_limits<juce::int64>::max(), lately));
    EXPECT_FALSE (fetchesChangeLog (true, std::numeric_limits<juce::int64>::min(), lately));
}

TEST_F (PluginEditorPolicyTest, DayAndWeekEndToTheMillisecond)
{
    const auto time = now();
    const FixedTime fixedTime (time);
    const auto never = std::numeric_limits<juce::int64>::min();

    // Fresh until a day has passed since the release.
    EXPECT_TRUE (fetchesChangeLog (true, time - dayMilliseconds + 1, time - 1));
    EXPECT_FALSE (fetchesChangeLog (true, time - dayMilliseconds, time - 1));

    // Due again once more than a week has passed since the last change log.
    EXPECT_FALSE (fetchesChangeLog (true, never, time - weekMilliseconds));
    EXPECT_TRUE (fetchesChangeLog (true, never, time - weekMilliseconds - 1));
}

// A checker calls its listeners by a message, which may come before its thread has ended.
TEST_F (PluginEditorPolicyTest, TheChangeLogIsFetchedThoughTheCheckHasNotQuiteEnded)
{
    auto reply = HttpReply::page ("It glides now.");
    reply.delayMilliseconds = 20;
    server.setReply ("/notes/changeLogMac.php", reply);
    const EditorWindow editor (product);

    // On a busy machine the answer may come later than an editor waits for it.
    constexpr auto maxTries = 50;
    auto isFetched = false;

    for (auto i = 0; i < maxTries && ! isFetched; ++i)
    {
        // This one's own job, without a quarter of a second before it, stands for the check. No message is delivered
        // meanwhile.
        UpdateChecker checker ("1.0.0");
        checker.url = juce::URL (product.releaseNotesUrl);
        checker.changeLogMode = true;
        const auto numRequests = server.getRequests().size();
        ASSERT_TRUE (checker.startThread (juce::Thread::Priority::normal));

        while (checker.isThreadRunning() && server.getRequests().size() == numRequests)
            juce::Thread::sleep (1);

        if (! checker.isThreadRunning())
            continue;

        editor->versionCheckFinished (checker, true, now());
        EXPECT_TRUE (checker.waitForThreadToExit (30000));
        isFetched = server.getRequests().size() == numRequests + 2;
    }

    EXPECT_TRUE (isFetched);
}

TEST_F (PluginEditorPolicyTest, ChangeLogLiesOverAllElse)
{
    const EditorWindow editor (product);
    UpdateChecker checker ("1.0.0");
    editor->changeLogReady (checker, "It glides now.");

    auto& overlay = *editor.find<UpdateChangeLogComponent>();
    ASSERT_TRUE (overlay.isVisible());
    auto* const top = editor->getComponentAt (editor.find<PluginHeaderComponent>()->getBounds().getCentre());
    EXPECT_TRUE (top == &overlay || overlay.isParentOf (top));
}
} // namespace
} // namespace cv::pluginCore
