#include "pluginCore/updates/BackgroundThreads.h"

namespace cv::pluginCore
{
namespace
{
/** Has the system keep this code, and the libraries that it needs, in memory until the process ends, whoever
    unloads it. False when it can't be done.
*/
bool keepCodeInMemory()
{
    const auto code = juce::File::getSpecialLocation (juce::File::currentExecutableFile);

    // A program goes with its process only.
    if (code == juce::File::getSpecialLocation (juce::File::hostApplicationPath))
        return true;

    // One more user of the library, who never says that he needs it no more.
    static auto* const library = new juce::DynamicLibrary;
    return library->getNativeHandle() != nullptr || library->open (code.getFullPathName());
}
} // namespace

/** Without a leak detector, which would complain of what is left behind on purpose. */
class BackgroundThreads::Worker final : public juce::Thread
{
public:
    Worker (const juce::String& name, std::function<void()> workToDo) : Thread (name), work (std::move (workToDo)) {}

    ~Worker() override { stopThread (-1); }

private:
    void run() override { std::exchange (work, nullptr)(); }

    std::function<void()> work;

    JUCE_DECLARE_NON_COPYABLE (Worker)
};

BackgroundThreads::BackgroundThreads()
{
    for (auto* const worker : std::exchange (getWorkersLeftBehind(), {}))
        workers.add (worker);
}

BackgroundThreads::~BackgroundThreads()
{
    if (! waitForWorkers() && keepCodeInMemory())
    {
        getWorkersLeftBehind().addArray (workers);
        workers.clearQuick (false);
    }

    // Workers that are still here go with the array, each once its thread has ended.
    clearSingletonInstance();
}

bool BackgroundThreads::launch (const juce::String& threadName, std::function<void()> work)
{
    auto& threads = *getInstance();
    const juce::ScopedLock scopedLock (threads.lock);

    threads.deleteFinishedWorkers();
    return threads.workers.add (std::make_unique<Worker> (threadName, std::move (work)))->startThread();
}

int BackgroundThreads::getNumRunning()
{
    auto& threads = *getInstance();
    const juce::ScopedLock scopedLock (threads.lock);

    threads.deleteFinishedWorkers();
    return threads.workers.size();
}

/** True when all threads have ended, false when one hangs. */
bool BackgroundThreads::waitForWorkers()
{
    const auto start = juce::Time::getMillisecondCounter();

    for (deleteFinishedWorkers(); ! workers.isEmpty(); deleteFinishedWorkers())
    {
        if (juce::Time::getMillisecondCounter() - start > (juce::uint32) patienceMilliseconds)
            return false;

        juce::Thread::sleep (1);
    }

    return true;
}

void BackgroundThreads::deleteFinishedWorkers()
{
    for (auto i = workers.size(); --i >= 0;)
        if (! workers.getUnchecked (i)->isThreadRunning())
            workers.remove (i);
}

juce::Array<BackgroundThreads::Worker*>& BackgroundThreads::getWorkersLeftBehind()
{
    static auto* const left = new juce::Array<Worker*>;
    return *left;
}
} // namespace cv::pluginCore
