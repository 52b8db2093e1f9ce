#pragma once

#include "storm/Instance.h"

#include <thread>
#include <vector>

namespace cv::storm
{
/** Threads that play instances, each of them its share, one block after the other. */
class AudioThreads
{
public:
    /** The instances outlive this object. */
    AudioThreads (std::vector<Instance>&, int numThreads, juce::int64 seed);
    ~AudioThreads();

    juce::int64 getNumBlocks() const noexcept { return numBlocks; }

    /** How many samples that came out were no numbers or above the plug-in's limit of 4. */
    juce::int64 getNumBadSamples() const noexcept { return numBadSamples; }

    /** The largest magnitude that came out so far, bad samples aside. */
    float getPeak() const noexcept { return peak; }

private:
    void run (size_t first, size_t step, juce::int64 seed);

    std::vector<Instance>& instances;
    std::atomic<juce::int64> numBlocks = 0;
    std::atomic<juce::int64> numBadSamples = 0;
    std::atomic<float> peak = 0.0f;
    std::atomic<bool> shouldStop = false;
    std::vector<std::thread> threads;

    JUCE_DECLARE_NON_COPYABLE (AudioThreads)
};
} // namespace cv::storm
