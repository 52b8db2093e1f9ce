#include "Situations.h"
#include "ThreadClock.h"
#include "support/LiteralModel.h"
#include "varlo/dsp/DelayEngine.h"
#include "varlo/spectrum/SampleFifo.h"

#include <benchmark/benchmark.h>

// The sound in each situation, and the literal model of the same sound beside it in the same run: targets for the
// ramps, the engine, the mean of the channels and its way into the analysis queue. Figures are the least of all
// repetitions, in nanoseconds of the thread's CPU time for a frame, that is a sample of all channels.

namespace cv::benchmarks
{
namespace
{
constexpr int numSeconds = 2;
constexpr int numRepetitions = 15;

/** What is timed in one go: long against the clock's own cost, and small enough for the first cache. */
constexpr int framesPerMeasurement = 2048;

test::LiteralModel::Values toModel (const varlo::ParameterValues& values)
{
    return { .mixPercent = values.mixPercent,
             .degradePercent = values.degradePercent,
             .delayMilliseconds = values.delayMilliseconds,
             .feedbackPercent = values.feedbackPercent,
             .lowpassHz = values.lowpassHz,
             .resonancePercent = values.resonancePercent };
}

/** Plays the input from its beginning, block by block, and tells what a frame took. */
template <typename PlayBlocks>
double measurePerFrame (const juce::AudioBuffer<float>& input, PlayBlocks&& playBlocks)
{
    juce::AudioBuffer<float> piece (input.getNumChannels(), framesPerMeasurement);
    double nanoseconds = 0.0;
    int numFrames = 0;

    for (int start = 0; start + framesPerMeasurement <= input.getNumSamples(); start += framesPerMeasurement)
    {
        for (int channel = 0; channel < input.getNumChannels(); ++channel)
            piece.copyFrom (channel, 0, input, channel, start, framesPerMeasurement);

        nanoseconds += measureNanoseconds ([&] { playBlocks (piece); });
        numFrames += framesPerMeasurement;
    }

    return nanoseconds / numFrames;
}

class Engine
{
public:
    Engine (const Situation& situationToPlay, double sampleRate, int samplesPerBlock)
        : situation (situationToPlay)
        , blockSize (samplesPerBlock)
    {
        engine.prepare (sampleRate, situation.settings);
    }

    void operator() (juce::AudioBuffer<float>& piece)
    {
        for (int start = 0; start < piece.getNumSamples(); start += blockSize)
        {
            juce::AudioBuffer<float> block (piece.getArrayOfWritePointers(), piece.getNumChannels(), start, blockSize);
            engine.setParameters (situation.getSettingsForBlock (blockIndex++));
            engine.process (block);
            fifo.pushMeanOverwriting (block);
        }
    }

private:
    const Situation& situation;
    const int blockSize;
    int blockIndex = 0;
    varlo::DelayEngine engine;
    varlo::SampleFifo fifo { 16384 };
};

class Model
{
public:
    Model (const Situation& situationToPlay, double sampleRate, int samplesPerBlock)
        : situation (situationToPlay)
        , blockSize (samplesPerBlock)
    {
        model.prepare (sampleRate, blockSize, toModel (situation.settings));
    }

    void operator() (const juce::AudioBuffer<float>& piece)
    {
        for (int start = 0; start < piece.getNumSamples(); start += blockSize)
        {
            block.resize ((size_t) piece.getNumChannels());

            for (size_t channel = 0; channel < block.size(); ++channel)
            {
                const auto* samples = piece.getReadPointer ((int) channel, start);
                block[channel].assign (samples, samples + blockSize);
            }

            model.process (block, toModel (situation.getSettingsForBlock (blockIndex++)), {});
        }
    }

private:
    const Situation& situation;
    const int blockSize;
    int blockIndex = 0;
    std::vector<std::vector<float>> block;
    test::LiteralModel model;
};

void sound (benchmark::State& state, const Situation& situation, double sampleRate, int blockSize, int numChannels)
{
    const juce::ScopedNoDenormals noDenormals;
    const auto input = situation.makeInput (numChannels, (int) (numSeconds * sampleRate), sampleRate);
    Engine engine (situation, sampleRate, blockSize);
    Model model (situation, sampleRate, blockSize);
    auto leastOfEngine = std::numeric_limits<double>::max();
    auto leastOfModel = leastOfEngine;

    for (auto _ : state)
    {
        const auto nanoseconds = measurePerFrame (input, engine);
        state.SetIterationTime (nanoseconds * 1.0e-9);
        leastOfEngine = std::min (leastOfEngine, nanoseconds);
        leastOfModel = std::min (leastOfModel, measurePerFrame (input, model));
    }

    state.counters["ns"] = leastOfEngine;
    state.counters["model"] = leastOfModel;
    state.counters["ratio"] = leastOfEngine / leastOfModel;
}

void addBenchmarks()
{
    const auto add =
        [] (const std::string& name, const Situation& situation, double sampleRate, int blockSize, int numChannels)
    {
        benchmark::RegisterBenchmark (name.c_str(), sound, situation, sampleRate, blockSize, numChannels)
            ->UseManualTime()
            ->Iterations (numRepetitions);
    };

    for (const auto& situation : situations)
    {
        const auto name = "sound/" + std::string (situation.name);
        add (name + "/stereo, blocks of 512", situation, 48000.0, 512, 2);
        add (name + "/stereo, blocks of 64", situation, 48000.0, 64, 2);
        add (name + "/mono, blocks of 512", situation, 48000.0, 512, 1);
    }

    for (const auto blockSize : { 16, 32, 128, 256, 1024, 2048 })
        add ("sound/rest/stereo, blocks of " + std::to_string (blockSize), situations[0], 48000.0, blockSize, 2);

    for (const auto sampleRate : { 44100.0, 96000.0, 192000.0 })
        add ("sound/rest/stereo, blocks of 512, " + std::to_string ((int) sampleRate) + " Hz", situations[0],
             sampleRate, 512, 2);
}

const auto added = (addBenchmarks(), true);
} // namespace
} // namespace cv::benchmarks
