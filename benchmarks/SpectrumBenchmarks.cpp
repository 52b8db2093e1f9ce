#include "support/Signals.h"
#include "varlo/spectrum/SampleFifo.h"
#include "varlo/spectrum/SpectrumAnalyser.h"

#include <benchmark/benchmark.h>

// The picture of the sound: one hop on its own thread, and the queue in front of it.

namespace cv::benchmarks
{
namespace
{
using varlo::SampleFifo;
using varlo::SpectrumAnalyser;

constexpr int blockSize = 512;

/** Reports the time per sample of a loop that works on `framesPerIteration`. */
void reportPerFrame (benchmark::State& state, int framesPerIteration)
{
    using Counter = benchmark::Counter;
    state.counters["frame"] = Counter (framesPerIteration, Counter::kIsIterationInvariantRate | Counter::kInvert);
}

void hop (benchmark::State& state)
{
    constexpr auto hopSamples = SpectrumAnalyser::hopSamples;
    SpectrumAnalyser analyser;
    const auto input = test::noise (hopSamples, 1, 0.5f);

    for (auto _ : state)
        benchmark::DoNotOptimize (analyser.analyse (input.data()));

    reportPerFrame (state, hopSamples);
}

void queue (benchmark::State& state)
{
    SampleFifo fifo (16384);
    const auto input = test::noise (blockSize, 1, 0.5f);
    auto output = input;

    for (auto _ : state)
    {
        fifo.pushOverwriting (input.data(), blockSize);
        benchmark::DoNotOptimize (fifo.pop (output.data(), blockSize));
        benchmark::ClobberMemory();
    }

    reportPerFrame (state, blockSize);
}

BENCHMARK (hop)->Name ("spectrum/hop");
BENCHMARK (queue)->Name ("spectrum/queue, both ends");
} // namespace
} // namespace cv::benchmarks
