#include "FrameCounter.h"
#include "support/LiteralModel.h"
#include "support/ProcessorHarness.h"
#include "support/Signals.h"

// processBlock as a whole, and the literal model of the same sound beside it, on stereo noise in
// blocks of 512.

namespace cv::benchmarks
{
namespace
{
enum class Movement
{
    none,
    lowpass,
    everything
};

using Values = test::LiteralModel::Values;

/** What the knobs stand at before a block. Two settings in turn keep every ramp running. */
Values valuesFor (Movement movement, int blockIndex)
{
    Values values { 50.0f, 0.0f, 1000.0f, 50.0f, 5000.0f, 0.0f };

    if (blockIndex % 2 == 0)
        return values;

    if (movement == Movement::lowpass)
        values.lowpassHz = 4000.0f;

    if (movement == Movement::everything)
        values = { 40.0f, 50.0f, 900.0f, 60.0f, 4000.0f, 20.0f };

    return values;
}

void applyTo (test::ProcessorHarness& harness, const Values& values)
{
    harness.set ("mix", values.mixPercent);
    harness.set ("degrade", values.degradePercent);
    harness.set ("delay", values.delayMilliseconds);
    harness.set ("feedback", values.feedbackPercent);
    harness.set ("lowpass", values.lowpassHz);
    harness.set ("resonance", values.resonancePercent);
}

std::vector<std::vector<float>> makeInput()
{
    return { test::noise (blockSize, 1, 0.5f), test::noise (blockSize, 2, 0.5f) };
}

void processBlock (benchmark::State& state, Movement movement)
{
    test::ProcessorHarness harness;
    harness.prepare (sampleRate, blockSize);
    juce::MidiBuffer midi;
    const auto input = test::toBuffer (makeInput());
    auto buffer = input;
    int blockIndex = 0;

    for (auto _ : state)
    {
        for (int channel = 0; channel < 2; ++channel)
            buffer.copyFrom (channel, 0, input, channel, 0, blockSize);

        if (movement != Movement::none)
        {
            state.PauseTiming();
            applyTo (harness, valuesFor (movement, blockIndex++));
            state.ResumeTiming();
        }

        harness.processor.processBlock (buffer, midi);
        benchmark::ClobberMemory();
    }

    countFrames (state, blockSize);
}

void literalModel (benchmark::State& state, Movement movement)
{
    const juce::ScopedNoDenormals noDenormals;
    test::LiteralModel model;
    model.prepare (sampleRate, blockSize, valuesFor (Movement::none, 0));
    const auto input = makeInput();
    auto buffer = input;
    int blockIndex = 0;

    for (auto _ : state)
    {
        buffer = input;
        model.process (buffer, valuesFor (movement, blockIndex++), {});
        benchmark::ClobberMemory();
    }

    countFrames (state, blockSize);
}

BENCHMARK_CAPTURE (processBlock, rest, Movement::none)->Name ("processBlock/rest");
BENCHMARK_CAPTURE (processBlock, lowpass, Movement::lowpass)->Name ("processBlock/Lowpass moving");
BENCHMARK_CAPTURE (processBlock, everything, Movement::everything)->Name ("processBlock/everything moving");
BENCHMARK_CAPTURE (literalModel, rest, Movement::none)->Name ("literal model/rest");
BENCHMARK_CAPTURE (literalModel, lowpass, Movement::lowpass)->Name ("literal model/Lowpass moving");
BENCHMARK_CAPTURE (literalModel, everything, Movement::everything)->Name ("literal model/everything moving");
} // namespace
} // namespace cv::benchmarks
