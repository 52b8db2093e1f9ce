#include "storm/AudioThreads.h"

#include <chrono>

namespace cv::storm
{
AudioThreads::AudioThreads (std::vector<Instance>& instancesToPlay, int numThreads, juce::int64 seed)
    : instances (instancesToPlay)
{
    for (auto i = 0; i < numThreads; ++i)
        threads.emplace_back ([this, i, numThreads, seed] { run ((size_t) i, (size_t) numThreads, seed + i); });
}

AudioThreads::~AudioThreads()
{
    shouldStop = true;

    for (auto& thread : threads)
        thread.join();
}

void AudioThreads::run (size_t first, size_t step, juce::int64 seed)
{
    // Leaves a busy machine to the thread that does the rest, most of the time.
    constexpr auto pause = std::chrono::milliseconds (5);
    juce::Random random (seed);

    while (! shouldStop)
    {
        for (auto i = first; i < instances.size(); i += step)
        {
            const auto heard = instances[i].play (random);
            numBlocks += heard.hasPlayed ? 1 : 0;
            numBadSamples += heard.numBadSamples;

            for (auto former = peak.load(); heard.peak > former;)
                if (peak.compare_exchange_weak (former, heard.peak))
                    break;
        }

        std::this_thread::sleep_for (pause);
    }
}
} // namespace cv::storm
