#include "support/MessageLoop.h"
#include "support/TemporaryHome.h"

#include <gtest/gtest.h>
#include <juce_events/juce_events.h>

namespace cv::test
{
namespace
{
TEST (MessageLoop, DeliversWhatOtherThreadsPost)
{
    auto delivered = false;
    juce::Thread::launch ([&] { juce::MessageManager::callAsync ([&] { delivered = true; }); });

    EXPECT_TRUE (runMessageLoopUntil ([&] { return delivered; }));
}

TEST (MessageLoop, RunsTimers)
{
    auto fired = false;
    juce::Timer::callAfterDelay (20, [&] { fired = true; });

    EXPECT_TRUE (runMessageLoopUntil ([&] { return fired; }));
}

TEST (MessageLoop, GivesUpWhenTheTimeIsOver)
{
    EXPECT_FALSE (runMessageLoopUntil ([] { return false; }, 10));
}

TEST (TemporaryHome, IsTheHomeForAsLongAsItLives)
{
    const auto before = juce::File ("~");

    {
        const TemporaryHome home;
        EXPECT_EQ (juce::File ("~"), home.getFolder());
        EXPECT_NE (home.getFolder(), before);
        EXPECT_TRUE (home.getFolder().isDirectory());
    }

    EXPECT_EQ (juce::File ("~"), before);
}
} // namespace
} // namespace cv::test
