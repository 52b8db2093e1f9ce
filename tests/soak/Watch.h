#pragma once

#include <juce_events/juce_events.h>

#include <atomic>
#include <thread>

namespace cv::soak
{
/** Looks on while others work: at errors that X servers report to this process, at how long the message thread
    leaves its messages waiting, and at the memory. One at a time, made on the message thread.
*/
class Watch : private juce::Timer
{
public:
    /** The display is open by now, and no one else takes the errors. */
    Watch();
    ~Watch() override;

    /** How many errors came, and the words of the first. */
    static int getNumDisplayErrors();
    static juce::String getFirstDisplayError();

    /** The longest time so far for which no message was delivered, in milliseconds. */
    double getLongestStall() const noexcept { return longestStallMilliseconds; }

    /** What this process has in physical memory once all that is free has gone back to the system, in bytes. */
    static juce::int64 measureMemory();

private:
    void timerCallback() override;
    void endStuckProcess() const;

    std::atomic<double> lastTurn;
    double longestStallMilliseconds = 0.0;
    std::atomic<bool> shouldStop = false;
    std::thread thread;

    JUCE_DECLARE_NON_COPYABLE (Watch)
};
} // namespace cv::soak
