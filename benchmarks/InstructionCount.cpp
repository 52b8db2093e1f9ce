#include "Situations.h"
#include "support/ProcessorHarness.h"

#include <cstdio>
#include <cstring>

// Plays one second of a situation through the processor's blocks: to be run under a tool that counts the instructions
// within processBlock(). Prints the number of frames.

namespace
{
void setParameters (cv::test::ProcessorHarness& harness, const cv::varlo::ParameterValues& values)
{
    harness.set ("mix", values.mixPercent);
    harness.set ("degrade", values.degradePercent);
    harness.set ("delay", values.delayMilliseconds);
    harness.set ("feedback", values.feedbackPercent);
    harness.set ("lowpass", values.lowpassHz);
    harness.set ("resonance", values.resonancePercent);
}
} // namespace

int main (int argc, char** argv)
{
    constexpr double sampleRate = 48000.0;
    constexpr int blockSize = 512;
    constexpr int numBlocks = 94;

    const auto* situation = argc == 2 ? cv::benchmarks::findSituation (argv[1]) : nullptr;

    if (situation == nullptr)
    {
        std::fprintf (stderr, "usage: %s SITUATION, one of", argv[0]);

        for (const auto& known : cv::benchmarks::situations)
            std::fprintf (stderr, " \"%s\"", known.name);

        std::fprintf (stderr, "\n");
        return 2;
    }

    cv::test::ProcessorHarness harness;
    setParameters (harness, situation->settings);
    harness.prepare (sampleRate, blockSize);
    auto input = situation->makeInput (2, numBlocks * blockSize, sampleRate);
    juce::MidiBuffer midi;

    for (int block = 0; block < numBlocks; ++block)
    {
        setParameters (harness, situation->getSettingsForBlock (block));
        juce::AudioBuffer<float> audio (input.getArrayOfWritePointers(), 2, block * blockSize, blockSize);
        harness.processor.processBlock (audio, midi);
    }

    std::printf ("%d frames\n", numBlocks * blockSize);
    return 0;
}
