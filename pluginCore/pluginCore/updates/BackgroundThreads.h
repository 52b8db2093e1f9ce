#pragma once

#include <juce_events/juce_events.h>

#include <functional>

namespace cv::pluginCore
{
/** Keeps the threads that their starter doesn't wait for.

    Some calls can't be interrupted, a name look-up foremost. Whoever must not wait for such a call makes
    it on a thread from here and forgets about it; work that is launched has to end by itself.

    The code of a plug-in may go when its last instance has gone, and a thread must not run in code that is
    gone. So JUCE's shutdown waits for the threads that still run then, but no longer than
    `patienceMilliseconds`: if one hangs for more than that, the code stays in memory until the process ends,
    and the thread ends by itself in its own time. Only where the system can't keep the code there is no limit.
    What is left of such threads is taken over by the next one of this class in the process.
*/
class BackgroundThreads final : private juce::DeletedAtShutdown
{
public:
    /** Time enough for a thread that has nothing to wait for, and too little to be noticed when a host quits. */
    static constexpr int patienceMilliseconds = 100;

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

    bool waitForWorkers();
    void deleteFinishedWorkers();

    /** What outlives this object, and is never deleted: process-wide variables go while threads still run. */
    static juce::Array<Worker*>& getWorkersLeftBehind();

    juce::CriticalSection lock;
    juce::OwnedArray<Worker> workers;

    JUCE_DECLARE_NON_COPYABLE (BackgroundThreads)
};
} // namespace cv::pluginCore
