#pragma once

#include <functional>

namespace cv::test
{
/** Delivers messages, timers and asynchronous updates on the calling thread, the message thread, until
    the condition holds. False if it still doesn't after `timeoutMilliseconds`.
*/
bool runMessageLoopUntil (const std::function<bool()>& condition, int timeoutMilliseconds = 5000);

/** The same for a fixed time in milliseconds, for tests that wait for something not to happen. */
void runMessageLoopFor (int milliseconds);
} // namespace cv::test
