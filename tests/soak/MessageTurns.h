#pragma once

#include <juce_events/juce_events.h>

#include <functional>

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
} // namespace cv::soak
