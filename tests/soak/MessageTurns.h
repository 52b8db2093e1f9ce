#pragma once

#include <juce_events/juce_events.h>

#include <functional>

#include <juce_events/native/juce_EventLoopInternal_linux.h>

namespace cv::soak
{
/** Delivers messages for so long. Message thread. */
inline void runMessagesFor (int milliseconds)
{
    juce::MessageManager::getInstance()->runDispatchLoopUntil (milliseconds);
}

/** Delivers messages until the condition holds; false if it still doesn't after so long. */
inline bool runMessagesUntil (const std::function<bool()>& condition, int limitMilliseconds = 5000)
{
    const auto start = juce::Time::getMillisecondCounterHiRes();

    while (! condition())
    {
        if (juce::Time::getMillisecondCounterHiRes() - start > limitMilliseconds)
            return false;

        runMessagesFor (10);
    }

    return true;
}

/** Delivers the messages that this process has sent itself, and nothing of the display's. To be called before an
    editor's window goes: JUCE's embedding sends itself a message whenever the embedded window changes its size, and
    does not ask whether it is still there when the message arrives. What the plug-in has sent itself waits in a
    queue of the plug-in's own and stays on its way. Message thread.
*/
inline void deliverSentMessages()
{
    // JUCE opens the queue before the display and anything else that it waits for.
    const auto queue = juce::LinuxEventLoopInternal::getRegisteredFds().front();
    juce::LinuxEventLoopInternal::invokeEventLoopCallbackForFd (queue);
}
} // namespace cv::soak
