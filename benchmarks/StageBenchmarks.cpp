#include "FrameCounter.h"
#include "dsp/DegradeStage.h"
#include "dsp/DelayChannel.h"
#include "dsp/FeedbackConditioner.h"
#include "dsp/OutputGuard.h"
#include "dsp/WetLowpass.h"
#include "support/Signals.h"

// Each benchmark works on both channels of a block, so that a frame is a stereo frame. "Moving"
// means that a ramp runs during every block.

namespace cv::benchmarks
{
namespace
{
using varlo::DegradeStage;
using varlo::DelayChannel;
using varlo::FeedbackConditioner;
using varlo::FeedbackLadder;
using varlo::WetLowpass;

constexpr juce::dsp::ProcessSpec spec { sampleRate, blockSize, 2 };

/** Runs `processBlock (buffer, blockIndex)` over fresh stereo noise of a level. */
template <typename ProcessBlock>
void measure (benchmark::State& state, float level, ProcessBlock&& processBlock)
{
    const juce::ScopedNoDenormals noDenormals;
    const auto input = test::toBuffer ({ test::noise (blockSize, 1, level), test::noise (blockSize, 2, level) });
    auto buffer = input;
    int blockIndex = 0;

    for (auto _ : state)
    {
        for (int channel = 0; channel < 2; ++channel)
            buffer.copyFrom (channel, 0, input, channel, 0, blockSize);

        processBlock (buffer, blockIndex++);
        benchmark::DoNotOptimize (buffer.getWritePointer (0));
        benchmark::ClobberMemory();
    }

    countFrames (state, blockSize);
}

/** A value that differs from block to block, for a ramp that never rests. */
template <typename Value>
Value alternate (int blockIndex, Value a, Value b)
{
    return blockIndex % 2 == 0 ? a : b;
}

void delayLine (benchmark::State& state, bool moving)
{
    std::array<DelayChannel, 2> channels;

    for (auto& channel : channels)
    {
        channel.setDelaySeconds (0.5f);
        channel.setLoopGain (0.5f);
        channel.prepare (blockSize, (float) sampleRate);
    }

    measure (state, 0.5f,
             [&] (juce::AudioBuffer<float>& buffer, int block)
             {
                 for (int i = 0; i < 2; ++i)
                 {
                     auto& channel = channels[(size_t) i];

                     if (moving)
                     {
                         channel.setDelaySeconds (alternate (block, 0.4f, 0.5f));
                         channel.setLoopGain (alternate (block, 0.4f, 0.5f));
                     }

                     channel.process (buffer.getWritePointer (i), blockSize);
                 }
             });
}

void feedbackLadder (benchmark::State& state, bool moving)
{
    std::array<FeedbackLadder, 2> ladders;

    for (auto& ladder : ladders)
    {
        ladder.setCutoff (5000.0f);
        ladder.prepare (sampleRate);
    }

    measure (state, 0.5f,
             [&] (juce::AudioBuffer<float>& buffer, int block)
             {
                 for (int i = 0; i < 2; ++i)
                 {
                     auto& ladder = ladders[(size_t) i];

                     if (moving)
                         ladder.setCutoff (alternate (block, 4000.0f, 5000.0f));

                     for (auto* sample = buffer.getWritePointer (i); sample != buffer.getReadPointer (i) + blockSize;
                          ++sample)
                         *sample = ladder.processSample (*sample);
                 }
             });
}

void conditioner (benchmark::State& state, float level)
{
    FeedbackConditioner feedbackConditioner;
    feedbackConditioner.setCutoff (5000.0f);
    feedbackConditioner.prepare (spec);

    measure (state, level,
             [&] (juce::AudioBuffer<float>& buffer, int)
             {
                 for (int i = 0; i < 2; ++i)
                     for (auto* sample = buffer.getWritePointer (i); sample != buffer.getReadPointer (i) + blockSize;
                          ++sample)
                         *sample = feedbackConditioner.processSample (i, *sample);
             });
}

void degrade (benchmark::State& state, float amount)
{
    DegradeStage stage;

    measure (state, 0.5f,
             [&] (juce::AudioBuffer<float>& buffer, int)
             {
                 stage.update (amount, (float) sampleRate);
                 stage.process (buffer);
             });
}

void wetLowpass (benchmark::State& state, bool moving)
{
    std::array<WetLowpass, 2> lowpasses;

    for (auto& lowpass : lowpasses)
    {
        lowpass.setCutoff (5000.0f);
        lowpass.setResonance (0.7f);
        lowpass.prepare (spec);
    }

    measure (state, 0.5f,
             [&] (juce::AudioBuffer<float>& buffer, int block)
             {
                 for (int i = 0; i < 2; ++i)
                 {
                     auto& lowpass = lowpasses[(size_t) i];

                     if (moving)
                         lowpass.setCutoff (alternate (block, 4000.0f, 5000.0f));

                     lowpass.process (buffer.getWritePointer (i), blockSize);
                 }
             });
}

void outputGuard (benchmark::State& state)
{
    measure (state, 0.5f, [] (juce::AudioBuffer<float>& buffer, int) { varlo::guardOutput (buffer); });
}

BENCHMARK_CAPTURE (delayLine, rest, false)->Name ("stage/delay line/rest");
BENCHMARK_CAPTURE (delayLine, moving, true)->Name ("stage/delay line/moving");
BENCHMARK_CAPTURE (feedbackLadder, rest, false)->Name ("stage/feedback ladder/rest");
BENCHMARK_CAPTURE (feedbackLadder, moving, true)->Name ("stage/feedback ladder/moving");
BENCHMARK_CAPTURE (conditioner, quiet, 0.5f)->Name ("stage/ladder and limiter/below threshold");
BENCHMARK_CAPTURE (conditioner, loud, 16.0f)->Name ("stage/ladder and limiter/limiting");
BENCHMARK_CAPTURE (degrade, off, 0.0f)->Name ("stage/degrade/off");
BENCHMARK_CAPTURE (degrade, half, 0.5f)->Name ("stage/degrade/half");
BENCHMARK_CAPTURE (wetLowpass, rest, false)->Name ("stage/wet low-pass/rest");
BENCHMARK_CAPTURE (wetLowpass, moving, true)->Name ("stage/wet low-pass/moving");
BENCHMARK (outputGuard)->Name ("stage/output guard");
} // namespace
} // namespace cv::benchmarks
