#pragma once

#include <functional>

namespace cv::test
{
/** Delivers messages, timers and asynchronous updates on the calling thread, the message thread, until
    the condition holds. False if it still doesn't after `timeoutMilliseconds`, which on a machine that is busy
    with other things has to be long.
*/
bool runMessageLoopUntil (const std::function<bool()>& condition, int timeoutMilliseconds = 30000);

/** The same for a fixed time in milliseconds, for tests that wait for something not to happen. */
void runMessageLoopFor (int milliseconds);
} // namespace cv::test
