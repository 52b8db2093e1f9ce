#include "updates/BackgroundThreads.h"

namespace cv::pluginCore
{
class BackgroundThreads::Worker final : public juce::Thread
{
public:
    Worker (const juce::String& name, std::function<void()> workToDo) : Thread (name), work (std::move (workToDo)) {}

    ~Worker() override { stopThread (-1); }

private:
    void run() override { std::exchange (work, nullptr)(); }

    std::function<void()> work;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (Worker)
};

BackgroundThreads::BackgroundThreads() = default;

BackgroundThreads::~BackgroundThreads()
{
    // The workers go with the array, each once its thread has ended.
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

void BackgroundThreads::deleteFinishedWorkers()
{
    for (auto i = workers.size(); --i >= 0;)
        if (! workers.getUnchecked (i)->isThreadRunning())
            workers.remove (i);
}
} // namespace cv::pluginCore
