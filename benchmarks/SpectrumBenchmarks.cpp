#include "FrameCounter.h"
#include "spectrum/SampleFifo.h"
#include "spectrum/SpectrumAnalyser.h"
#include "support/Signals.h"

// The picture of the sound: one hop on its own thread, and the queue in front of it.

namespace cv::benchmarks
{
namespace
{
using varlo::SampleFifo;
using varlo::SpectrumAnalyser;

void hop (benchmark::State& state)
{
    constexpr auto hopSamples = SpectrumAnalyser::hopSamples;
    SpectrumAnalyser analyser;
    const auto input = test::noise (hopSamples, 1, 0.5f);

    for (auto _ : state)
        benchmark::DoNotOptimize (analyser.analyse (input.data()));

    countFrames (state, hopSamples);
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

    countFrames (state, blockSize);
}

BENCHMARK (hop)->Name ("spectrum/hop");
BENCHMARK (queue)->Name ("spectrum/queue, both ends");
} // namespace
} // namespace cv::benchmarks
