#pragma once

#include <benchmark/benchmark.h>

namespace cv::benchmarks
{
constexpr double sampleRate = 44100.0;
constexpr int blockSize = 512;

/** Reports the time per stereo frame of a loop that works on `framesPerIteration`. */
inline void countFrames (benchmark::State& state, int framesPerIteration)
{
    using Counter = benchmark::Counter;
    state.counters["frame"] = Counter (framesPerIteration, Counter::kIsIterationInvariantRate | Counter::kInvert);
}
} // namespace cv::benchmarks
