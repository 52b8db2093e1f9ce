#include "Situations.h"
#include "support/ProcessorHarness.h"

#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <thread>

// Plays instances at the pace of a sound card and tells what share of a processor core the audio thread and the
// analysis threads take: what a host's meter shows, caches gone cold between the blocks included.

namespace
{
double getSeconds (int who)
{
    rusage usage {};
    getrusage (who, &usage);

    const auto toSeconds = [] (const timeval& time) { return (double) time.tv_sec + (double) time.tv_usec * 1.0e-6; };
    return toSeconds (usage.ru_utime) + toSeconds (usage.ru_stime);
}
} // namespace

int main (int argc, char** argv)
{
    constexpr double sampleRate = 48000.0;
    const auto numInstances = argc == 4 ? std::atoi (argv[1]) : 0;
    const auto blockSize = argc == 4 ? std::atoi (argv[2]) : 0;
    const auto seconds = argc == 4 ? std::atof (argv[3]) : 0.0;

    if (numInstances < 1 || blockSize < 1 || ! (seconds > 0.0))
    {
        std::fprintf (stderr, "usage: %s INSTANCES BLOCK SECONDS\n", argv[0]);
        return 2;
    }

    std::vector<std::unique_ptr<cv::test::ProcessorHarness>> instances;

    for (int i = 0; i < numInstances; ++i)
    {
        instances.push_back (std::make_unique<cv::test::ProcessorHarness>());
        instances.back()->prepare (sampleRate, blockSize);
    }

    const auto input = cv::benchmarks::situations[0].makeInput (2, blockSize, sampleRate);
    juce::AudioBuffer<float> audio (2, blockSize);
    juce::MidiBuffer midi;

    using Clock = std::chrono::steady_clock;
    const auto numBlocks = (int) (seconds * sampleRate / blockSize);
    const auto start = Clock::now();
    const auto audioBefore = getSeconds (RUSAGE_THREAD);
    const auto allBefore = getSeconds (RUSAGE_SELF);

    for (int block = 0; block < numBlocks; ++block)
    {
        std::this_thread::sleep_until (start
                                       + std::chrono::duration_cast<Clock::duration> (
                                           std::chrono::duration<double> (block * blockSize / sampleRate)));

        for (auto& instance : instances)
        {
            for (int channel = 0; channel < 2; ++channel)
                audio.copyFrom (channel, 0, input, channel, 0, blockSize);

            instance->processor.processBlock (audio, midi);
        }
    }

    const auto lasted = std::chrono::duration<double> (Clock::now() - start).count();
    const auto audioSeconds = getSeconds (RUSAGE_THREAD) - audioBefore;
    const auto otherSeconds = getSeconds (RUSAGE_SELF) - allBefore - audioSeconds;
    std::printf ("%2d instances, blocks of %4d: audio thread %6.3f %%, analysis threads %6.3f %% of a core\n",
                 numInstances, blockSize, 100.0 * audioSeconds / lasted, 100.0 * otherSeconds / lasted);
    return 0;
}
