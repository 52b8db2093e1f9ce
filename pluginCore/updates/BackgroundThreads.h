#pragma once

#include <juce_events/juce_events.h>

#include <functional>

namespace cv::pluginCore
{
/** Keeps the threads that their starter doesn't wait for.

    Some calls can't be interrupted, a name look-up foremost. Whoever must not wait for such a call makes
    it on a thread from here and forgets about it. The code of a plug-in may go when its last instance
    has gone, so JUCE's shutdown waits for the threads that are still running then, without a limit: work
    that is launched has to end by itself.
*/
class BackgroundThreads final : private juce::DeletedAtShutdown
{
public:
    /** Runs `work` on a new thread of that name and returns at once; `work` and what it holds are deleted
        on that thread. False when the system has no thread to give; `work` isn't run then. Any thread, may
        lock, while JUCE is initialised.
    */
    static bool launch (const juce::String& threadName, std::function<void()> work);

    /** The number of threads that haven't ended yet. Any thread, may lock. */
    static int getNumRunning();

    JUCE_DECLARE_SINGLETON_INLINE (BackgroundThreads, false)

private:
    class Worker;

    BackgroundThreads();
    ~BackgroundThreads() override;

    void deleteFinishedWorkers();

    juce::CriticalSection lock;
    juce::OwnedArray<Worker> workers;

    JUCE_DECLARE_NON_COPYABLE (BackgroundThreads)
};
} // namespace cv::pluginCore
