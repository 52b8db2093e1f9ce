#pragma once

#include "support/LiteralModel.h"
#include "support/ProcessorHarness.h"

#include <gtest/gtest.h>

namespace cv::test
{
/** What a WildHost does with the knobs and with its input. */
enum class Situation
{
    wild,        // all of them at random, with rests in between
    rest,        // as a new instance stands
    shortDelay,  // nothing else
    coloured,    // Degrade and Resonance half up
    lowpass,     // Lowpass moves before every block
    gliding,     // Delay moves before every block
    loud,        // much feedback of a loud signal, in the limiter all the time
    everything,  // all of them move before every block
    degradeMoves // Degrade alone moves before every block
};

/** A host gone wild: it moves parameters, cuts blocks, jumps about and prepares again, all from one seed, and holds
    the processor's output against the literal model's.
*/
class WildHost
{
public:
    struct Options
    {
        double sampleRate = 44100.0;
        int numChannels = 2;
        Situation situation = Situation::wild;
        bool isLive = false;               // the host in which a jump counts at a steady tempo only
        bool changesRateAndLayout = false; // at each prepare
    };

    WildHost (juce::int64 seed, const Options&);

    /** Plays one block; false, with a failure of the test, when one of its samples differs in any bit. */
    bool playBlock (int blockIndex);

    double getSecondsPlayed() const { return secondsPlayed; }

    float getLoudestSample() const { return loudest; }

    /** How often what the model remembers has been emptied by a jump. */
    int getNumJumps() const { return numJumps; }

private:
    LiteralModel::Values values();
    void prepare();
    void moveParameters();
    void setParameters (const LiteralModel::Values&);
    void makeInput (int numSamples);
    std::optional<LiteralModel::Position> movePlayHead();
    bool areSame (const juce::AudioBuffer<float>& processed, int blockIndex) const;

    juce::Random random;
    const Options options;
    double sampleRate;
    ProcessorHarness harness;
    LiteralModel model;
    std::vector<std::vector<float>> channels;
    juce::int64 time = 0;
    double bpm = 120.0;
    bool looping = false;
    float level = 1.0f;
    double secondsPlayed = 0.0;
    float loudest = 0.0f;
    int numJumps = 0;
};
} // namespace cv::test
