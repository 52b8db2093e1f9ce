#include "Situations.h"
#include "ThreadClock.h"
#include "support/ProcessorHarness.h"

#include <benchmark/benchmark.h>
#include <malloc.h>

// Many instances whose blocks come one after the other, as on one of a host's audio threads: what a frame of one of
// them costs with the caches shared, and what a block costs in which the transport jumps. All of processBlock is in
// it, the waking of the analysis threads too.

namespace cv::benchmarks
{
namespace
{
constexpr int numRepetitions = 9;

class Instances
{
public:
    Instances (int numInstances, double sampleRate, int samplesPerBlock)
        : blockSize (samplesPerBlock)
        , input (situations[0].makeInput (2, blockSize, sampleRate))
        , audio (2, blockSize)
    {
        for (int i = 0; i < numInstances; ++i)
        {
            instances.push_back (std::make_unique<test::ProcessorHarness>());
            instances.back()->prepare (sampleRate, blockSize);
        }
    }

    /** One block of every instance, which a jump of the play head precedes; tells how many nanoseconds it took. */
    double playBlock (bool jumps)
    {
        time = jumps ? time + 1000 * blockSize : time + blockSize;
        double nanoseconds = 0.0;

        for (auto& instance : instances)
        {
            instance->playHead.position = test::FakePlayHead::playingAt (time);

            for (int channel = 0; channel < 2; ++channel)
                audio.copyFrom (channel, 0, input, channel, 0, blockSize);

            nanoseconds += measureNanoseconds ([&] { instance->processor.processBlock (audio, midi); });
        }

        return nanoseconds;
    }

    void prepareAgain (double sampleRate)
    {
        for (auto& instance : instances)
            instance->prepare (sampleRate, blockSize);
    }

private:
    const int blockSize;
    const juce::AudioBuffer<float> input;
    juce::AudioBuffer<float> audio;
    juce::MidiBuffer midi;
    std::vector<std::unique_ptr<test::ProcessorHarness>> instances;
    juce::int64 time = 0;
};

void instances (benchmark::State& state, int numInstances, double sampleRate, int blockSize)
{
    constexpr int numBlocks = 300;
    Instances all (numInstances, sampleRate, blockSize);
    all.playBlock (true);
    auto least = std::numeric_limits<double>::max();

    for (auto _ : state)
    {
        double nanoseconds = 0.0;

        for (int block = 0; block < numBlocks; ++block)
            nanoseconds += all.playBlock (false);

        state.SetIterationTime (nanoseconds * 1.0e-9);
        least = std::min (least, nanoseconds / numBlocks);
    }

    state.counters["ns per frame of one"] = least / numInstances / blockSize;
    state.counters["us per block of all"] = least / 1000.0;
}

void jump (benchmark::State& state, double sampleRate, int blockSize)
{
    constexpr int numInstances = 16;
    constexpr int numJumps = 100;
    constexpr int blocksBetween = 4;
    Instances all (numInstances, sampleRate, blockSize);
    auto leastWith = std::numeric_limits<double>::max();
    auto leastWithout = leastWith;

    for (auto _ : state)
    {
        double with = 0.0;
        double without = 0.0;

        for (int i = 0; i < numJumps; ++i)
        {
            with += all.playBlock (true);

            for (int block = 0; block < blocksBetween; ++block)
                without += all.playBlock (false);
        }

        state.SetIterationTime (with * 1.0e-9);
        leastWith = std::min (leastWith, with / numJumps);
        leastWithout = std::min (leastWithout, without / (numJumps * blocksBetween));
    }

    state.counters["us with"] = leastWith / 1000.0;
    state.counters["us without"] = leastWithout / 1000.0;
    state.counters["ratio"] = leastWith / leastWithout;
}

/** prepareToPlay() of one instance that has played, at the rate that it had and at another one. */
void prepare (benchmark::State& state, bool atNewRate)
{
    Instances one (1, 48000.0, 512);
    int count = 0;

    for (auto _ : state)
    {
        one.playBlock (false);
        state.SetIterationTime (
            measureNanoseconds ([&] { one.prepareAgain (atNewRate && ++count % 2 == 1 ? 96000.0 : 48000.0); })
            * 1.0e-9);
    }
}

/** What an instance that is prepared holds of the heap. */
void memory (benchmark::State& state, double sampleRate)
{
    const auto getBytes = []
    {
        const auto info = mallinfo2();
        return (double) (info.uordblks + info.hblkhd);
    };

    constexpr int numInstances = 8;
    Instances first (1, sampleRate, 512); // and what all instances share
    double bytes = 0.0;

    for (auto _ : state)
    {
        const auto before = getBytes();
        Instances all (numInstances, sampleRate, 512);
        all.playBlock (false);
        bytes = (getBytes() - before) / numInstances;
    }

    state.counters["MB"] = bytes * 1.0e-6;
}

void addBenchmarks()
{
    for (const auto numInstances : { 1, 16, 64 })
        for (const auto blockSize : { 64, 512 })
            benchmark::RegisterBenchmark (
                ("instances/" + std::to_string (numInstances) + ", blocks of " + std::to_string (blockSize)).c_str(),
                instances, numInstances, 48000.0, blockSize)
                ->UseManualTime()
                ->Iterations (numRepetitions);

    for (const auto sampleRate : { 44100.0, 48000.0, 96000.0, 192000.0 })
        benchmark::RegisterBenchmark (
            ("jump/16 instances, blocks of 64, " + std::to_string ((int) sampleRate) + " Hz").c_str(), jump, sampleRate,
            64)
            ->UseManualTime()
            ->Iterations (numRepetitions);

    for (const auto sampleRate : { 48000.0, 192000.0 })
        benchmark::RegisterBenchmark (("memory/instance, " + std::to_string ((int) sampleRate) + " Hz").c_str(), memory,
                                      sampleRate)
            ->Iterations (3);

    benchmark::RegisterBenchmark ("prepare/same rate", prepare, false)->UseManualTime()->Iterations (200);
    benchmark::RegisterBenchmark ("prepare/new rate", prepare, true)->UseManualTime()->Iterations (50);
}

const auto added = (addBenchmarks(), true);
} // namespace
} // namespace cv::benchmarks
