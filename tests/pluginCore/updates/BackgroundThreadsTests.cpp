#include "pluginCore/updates/BackgroundThreads.h"

#include "support/MessageLoop.h"

#include <gtest/gtest.h>

namespace cv::pluginCore
{
namespace
{
using cv::test::runMessageLoopUntil;

bool noneIsRunning()
{
    return BackgroundThreads::getNumRunning() == 0;
}

TEST (BackgroundThreads, RunWorkElsewhereUnderItsName)
{
    juce::WaitableEvent done;
    juce::String name;
    auto* thread = juce::Thread::getCurrentThread();

    ASSERT_TRUE (BackgroundThreads::launch ("Test Work",
                                            [&]
                                            {
                                                thread = juce::Thread::getCurrentThread();
                                                name = thread->getThreadName();
                                                done.signal();
                                            }));

    ASSERT_TRUE (done.wait (5000));
    EXPECT_NE (thread, juce::Thread::getCurrentThread());
    EXPECT_EQ (name, "Test Work");
    EXPECT_TRUE (runMessageLoopUntil (noneIsRunning));
}

TEST (BackgroundThreads, LetGoOfTheWorkOnItsThread)
{
    const juce::WaitableEvent mayEnd;
    auto held = std::make_shared<int> (0);
    const std::weak_ptr<int> watch (held);

    BackgroundThreads::launch ("Test Work", [held = std::move (held), &mayEnd] { mayEnd.wait (5000); });
    EXPECT_EQ (BackgroundThreads::getNumRunning(), 1);
    EXPECT_FALSE (watch.expired());

    mayEnd.signal();
    EXPECT_TRUE (runMessageLoopUntil (noneIsRunning));
    EXPECT_TRUE (watch.expired());
}

TEST (BackgroundThreads, AreWaitedForAtTheEnd)
{
    juce::WaitableEvent mayEnd (true);
    std::atomic<int> numDone = 0;

    for (auto i = 0; i < 3; ++i)
        BackgroundThreads::launch ("Test Work",
                                   [&]
                                   {
                                       mayEnd.wait();
                                       ++numDone;
                                   });

    EXPECT_EQ (BackgroundThreads::getNumRunning(), 3);
    mayEnd.signal();
    BackgroundThreads::deleteInstance();

    // None of them stands in the way of the next.
    EXPECT_TRUE (runMessageLoopUntil (noneIsRunning));
    EXPECT_EQ (numDone, 3);
}

TEST (BackgroundThreads, AreLeftToThemselvesAtTheEndIfTheyHang)
{
    juce::WaitableEvent mayEnd (true);
    auto held = std::make_shared<int> (0);
    const std::weak_ptr<int> watch (held);
    BackgroundThreads::launch ("Test Work", [held = std::move (held), &mayEnd] { mayEnd.wait(); });

    // Would never return if it waited.
    BackgroundThreads::deleteInstance();
    EXPECT_FALSE (watch.expired());

    // Others are looked after as ever, and those that were left are taken over.
    BackgroundThreads::launch ("Test Work", [] {});
    EXPECT_TRUE (runMessageLoopUntil ([] { return BackgroundThreads::getNumRunning() == 1; }));
    BackgroundThreads::deleteInstance();
    EXPECT_EQ (BackgroundThreads::getNumRunning(), 1);

    mayEnd.signal();
    EXPECT_TRUE (runMessageLoopUntil (noneIsRunning));
    EXPECT_TRUE (watch.expired());
}
} // namespace
} // namespace cv::pluginCore
