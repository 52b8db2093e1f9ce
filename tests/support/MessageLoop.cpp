#include "support/MessageLoop.h"

#include <juce_events/juce_events.h>

// JUCE's own step of the message loop. Its public form, runDispatchLoopUntil, exists only in builds with
// modal loops, and the tests are to run the object code that ships.
namespace juce::detail
{
bool dispatchNextMessageOnSystemQueue (bool returnIfNoPendingMessages);
}

namespace cv::test
{
bool runMessageLoopUntil (const std::function<bool()>& condition, int timeoutMilliseconds)
{
    const auto start = juce::Time::getMillisecondCounterHiRes();

    while (! condition())
    {
        if (juce::Time::getMillisecondCounterHiRes() - start > timeoutMilliseconds)
            return false;

        if (! juce::detail::dispatchNextMessageOnSystemQueue (true))
            juce::Thread::sleep (1);
    }

    return true;
}

void runMessageLoopFor (int milliseconds)
{
    runMessageLoopUntil ([] { return false; }, milliseconds);
}
} // namespace cv::test
