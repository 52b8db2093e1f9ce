// Plays the sound's code on its own, without a plug-in around it, so that another processor's samples can be held
// against this one's:
//
//   varlo_sound_samples FILE             writes the samples of all scenarios
//   varlo_sound_samples --compare FILE   holds those in FILE against its own; ends with 1 if they are too far apart
//
// Either way the literal model has to give the same samples in every bit, on the same processor.

#include "support/LiteralModel.h"
#include "varlo/dsp/DelayEngine.h"

#include <bit>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <random>
#include <string>

namespace cv::test
{
namespace
{
using Values = LiteralModel::Values;

/** C libraries differ in the last bit of tanf, which each sample asks for while Lowpass moves. */
constexpr float furthestForTanf = 1.0e-5f;

struct Scenario
{
    const char* name;
    double sampleRate;
    int numChannels;
    float inputLevel;
    Values values;
    void (*move) (Values&, std::minstd_rand&);
    float furthest; // from another processor's samples
};

/** From 0 to 1. */
float draw (std::minstd_rand& random)
{
    return (float) (random() >> 7) / (float) (std::minstd_rand::max() >> 7);
}

float drawCutoff (std::minstd_rand& random)
{
    return 20.0f + 19980.0f * draw (random) * draw (random);
}

void rest (Values&, std::minstd_rand&) {}

void moveDelay (Values& values, std::minstd_rand& random)
{
    values.delayMilliseconds = 1.0f + 1000.0f * draw (random);
}

void moveGains (Values& values, std::minstd_rand& random)
{
    values.mixPercent = 100.0f * draw (random);
    values.feedbackPercent = 100.0f * draw (random);
}

void moveDegrade (Values& values, std::minstd_rand& random)
{
    values.degradePercent = 100.0f * draw (random);
}

void moveResonance (Values& values, std::minstd_rand& random)
{
    values.resonancePercent = 100.0f * draw (random);
}

void moveLowpass (Values& values, std::minstd_rand& random)
{
    values.lowpassHz = drawCutoff (random);
}

void moveAll (Values& values, std::minstd_rand& random)
{
    moveDelay (values, random);
    moveGains (values, random);
    moveDegrade (values, random);
    moveResonance (values, random);
    moveLowpass (values, random);
}

constexpr Values asItStarts { 50.0f, 0.0f, 1000.0f, 50.0f, 5000.0f, 0.0f };
constexpr Values coloured { 50.0f, 50.0f, 350.0f, 50.0f, 5000.0f, 50.0f };
constexpr Values loudLoop { 50.0f, 0.0f, 350.0f, 100.0f, 12000.0f, 0.0f };

/** At this cutoff and 44100 Hz tanf gives another last bit on x86-64 than on arm64; at one of a hundred it does. */
constexpr Values oddCutoff { 50.0f, 0.0f, 350.0f, 100.0f, 12793.0f, 0.0f };

constexpr Scenario scenarios[] {
    { "at rest", 44100.0, 2, 1.0f, asItStarts, rest, 0.0f },
    { "at rest, coloured", 48000.0, 2, 1.0f, coloured, rest, 0.0f },
    { "at rest, in the limiter", 44100.0, 2, 3.0f, loudLoop, rest, 0.0f },
    { "at rest, mono", 96000.0, 1, 1.0f, coloured, rest, 0.0f },
    { "at rest, tanf differs", 44100.0, 2, 3.0f, oddCutoff, rest, furthestForTanf },
    { "Delay moves", 44100.0, 2, 1.0f, coloured, moveDelay, 0.0f },
    { "Mix and Feedback move", 44100.0, 2, 1.0f, coloured, moveGains, 0.0f },
    { "Degrade moves", 44100.0, 2, 1.0f, coloured, moveDegrade, 0.0f },
    { "Resonance moves", 44100.0, 2, 1.0f, coloured, moveResonance, 0.0f },
    { "Lowpass moves", 44100.0, 2, 1.0f, asItStarts, moveLowpass, furthestForTanf },
    { "Lowpass moves, mono", 48000.0, 1, 1.0f, coloured, moveLowpass, furthestForTanf },
    { "all move", 44100.0, 2, 1.0f, coloured, moveAll, furthestForTanf },
    { "all move, in the limiter", 48000.0, 2, 3.0f, loudLoop, moveAll, furthestForTanf },
};

varlo::ParameterValues toParameters (const Values& values)
{
    return { values.mixPercent,      values.degradePercent, values.delayMilliseconds,
             values.feedbackPercent, values.lowpassHz,      values.resonancePercent };
}

/** What the sound's code makes of noise; empty, with a word on stderr, if the literal model makes something else. */
std::vector<float> play (const Scenario& scenario)
{
    constexpr auto blockLength = 256;
    constexpr auto seconds = 3.0;
    const auto numBlocks = (int) (seconds * scenario.sampleRate) / blockLength;

    const juce::ScopedNoDenormals noDenormals;
    const auto engine = std::make_unique<varlo::DelayEngine>();
    LiteralModel model;
    std::minstd_rand random (1);
    auto values = scenario.values;
    std::vector<std::vector<float>> block ((size_t) scenario.numChannels, std::vector<float> (blockLength));
    std::vector<float> samples;

    engine->prepare (scenario.sampleRate, toParameters (values));
    model.prepare (scenario.sampleRate, blockLength, values);

    for (int i = 0; i < numBlocks; ++i)
    {
        juce::AudioBuffer<float> buffer (scenario.numChannels, blockLength);

        for (size_t c = 0; c < block.size(); ++c)
        {
            for (auto& sample : block[c])
                sample = scenario.inputLevel * (2.0f * draw (random) - 1.0f);

            buffer.copyFrom ((int) c, 0, block[c].data(), blockLength);
        }

        scenario.move (values, random);
        engine->setParameters (toParameters (values));
        engine->process (buffer);
        model.process (block, values, {});

        for (size_t c = 0; c < block.size(); ++c)
        {
            const auto* played = buffer.getReadPointer ((int) c);

            for (size_t s = 0; s < block[c].size(); ++s)
            {
                if (std::bit_cast<std::uint32_t> (played[s]) != std::bit_cast<std::uint32_t> (block[c][s]))
                {
                    std::fprintf (stderr, "%s: block %d, sample %d: %.9g, and by the literal model %.9g\n",
                                  scenario.name, i, (int) s, (double) played[s], (double) block[c][s]);
                    return {};
                }
            }

            samples.insert (samples.end(), played, played + blockLength);
        }
    }

    return samples;
}

/** False if the file doesn't hold these samples within the scenario's limit; it goes on behind them. */
bool compare (std::ifstream& file, const Scenario& scenario, const std::vector<float>& samples)
{
    std::vector<float> others (samples.size());
    file.read (reinterpret_cast<char*> (others.data()), (std::streamsize) (others.size() * sizeof (float)));

    if (! file)
    {
        std::fprintf (stderr, "%s: the file ends too early\n", scenario.name);
        return false;
    }

    auto furthest = 0.0f;
    size_t numDifferent = 0;

    for (size_t i = 0; i < samples.size(); ++i)
    {
        const auto difference = std::abs (samples[i] - others[i]);
        furthest = std::isfinite (difference) ? std::max (furthest, difference) : INFINITY;
        numDifferent += difference > 0.0f ? 1 : 0;
    }

    const auto isFine = furthest <= scenario.furthest;
    std::printf ("%-26s %7zu of %zu samples differ, by at most %.2g%s\n", scenario.name, numDifferent, samples.size(),
                 (double) furthest, isFine ? "" : ": too far");
    return isFine;
}

bool run (bool compares, const char* path)
{
    std::ofstream output;
    std::ifstream input;

    if (compares)
        input.open (path, std::ios::binary);
    else
        output.open (path, std::ios::binary);

    auto isFine = compares ? input.is_open() : output.is_open();

    for (const auto& scenario : scenarios)
    {
        const auto samples = play (scenario);
        isFine = isFine && ! samples.empty();

        if (compares)
            isFine = compare (input, scenario, samples) && isFine;
        else
            output.write (reinterpret_cast<const char*> (samples.data()),
                          (std::streamsize) (samples.size() * sizeof (float)));
    }

    output.flush();
    return isFine && (compares ? input.peek() == std::ifstream::traits_type::eof() : output.good());
}
} // namespace
} // namespace cv::test

int main (int argc, char** argv)
{
    const auto compares = argc == 3 && std::string (argv[1]) == "--compare";

    if (argc != 2 && ! compares)
    {
        std::fprintf (stderr, "usage: varlo_sound_samples [--compare] FILE\n");
        return 2;
    }

    return cv::test::run (compares, argv[argc - 1]) ? 0 : 1;
}
