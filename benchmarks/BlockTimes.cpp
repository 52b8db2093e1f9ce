#include "ThreadClock.h"
#include "support/DisplayAtoms.h"
#include "support/MessageLoop.h"
#include "support/ProcessorHarness.h"
#include "support/Signals.h"
#include "support/TemporaryHome.h"

#include <chrono>
#include <iostream>
#include <numeric>
#include <thread>

#include <sys/resource.h>

// What one block costs its thread, at 64 samples and 48 kHz: with everything going on around it, and in an hour of
// silence behind a burst. CPU time of the thread is what the code takes, however busy the machine is; wall time holds
// what the system gives to others meanwhile. A wait for a lock shows in neither of them but in the count of waits.

namespace
{
using cv::test::ProcessorHarness;

constexpr auto sampleRateHz = 48000.0;
constexpr auto blockLength = 64;
constexpr auto blocksPerSecond = (int) sampleRateHz / blockLength;

struct Block
{
    double cpuNanoseconds = 0.0;
    double wallNanoseconds = 0.0;
};

class Player
{
public:
    explicit Player (ProcessorHarness& harnessToPlay) : harness (harnessToPlay) {}

    Block play (bool isLoud)
    {
        using Clock = std::chrono::steady_clock;

        for (auto channel = 0; channel < buffer.getNumChannels(); ++channel)
            for (auto i = 0; i < blockLength; ++i)
                buffer.setSample (channel, i, isLoud ? 2.0f * random.nextFloat() - 1.0f : 0.0f);

        Block block;
        const auto start = Clock::now();
        block.cpuNanoseconds =
            cv::benchmarks::measureNanoseconds ([this] { harness.processor.processBlock (buffer, midi); });
        block.wallNanoseconds = std::chrono::duration<double, std::nano> (Clock::now() - start).count();
        return block;
    }

private:
    ProcessorHarness& harness;
    juce::AudioBuffer<float> buffer { 2, blockLength };
    juce::MidiBuffer midi;
    juce::Random random { 1 };
};

/** How often this thread has given its processor away of its own accord: it has waited for something. */
long countWaits()
{
    rusage usage {};
    getrusage (RUSAGE_THREAD, &usage);
    return usage.ru_nvcsw;
}

void printTimes (const char* name, std::vector<double> nanoseconds)
{
    std::sort (nanoseconds.begin(), nanoseconds.end());
    const auto mean = std::accumulate (nanoseconds.begin(), nanoseconds.end(), 0.0) / (double) nanoseconds.size();
    const auto print = [&] (const char* what, double time)
    {
        std::cout << "  " << what << " " << juce::String (time / 1000.0, 2) << " us (" << juce::String (time / mean, 2)
                  << ")";
    };
    const auto at = [&] (double part) { return nanoseconds[(size_t) (part * (double) (nanoseconds.size() - 1))]; };

    std::cout << name << ":";
    print ("mean", mean);
    print ("p50", at (0.5));
    print ("p99", at (0.99));
    print ("p99.99", at (0.9999));
    print ("max", nanoseconds.back());
    std::cout << std::endl;
}

struct Recording
{
    std::vector<Block> blocks;
    long numWaits = 0;
};

/** As a host's audio thread does; loud for the first quarter of each second. */
Recording playInTime (ProcessorHarness& harness, double seconds)
{
    using Clock = std::chrono::steady_clock;
    constexpr auto period = std::chrono::nanoseconds ((juce::int64) (1.0e9 * blockLength / sampleRateHz));
    const auto numBlocks = (int) (seconds * blocksPerSecond);

    Recording recording;
    recording.blocks.reserve ((size_t) numBlocks);
    Player player (harness);
    auto next = Clock::now();

    for (auto i = 0; i < numBlocks; ++i)
    {
        const auto before = countWaits();
        recording.blocks.push_back (player.play (i / (blocksPerSecond / 4) % 4 == 0));
        recording.numWaits += countWaits() - before;
        next = std::max (next + period, Clock::now());
        std::this_thread::sleep_until (next);
    }

    return recording;
}

/** What is loaded and restored meanwhile. */
class Load
{
public:
    explicit Load (ProcessorHarness& harness) : processor (harness.processor)
    {
        processor.getPresetsManager().savePreset (preset, false);
        harness.set ("delay", 250.0f);
        harness.set ("feedback", 80.0f);
        processor.getStateInformation (state);
    }

    /** A hundred states a second and a preset with every tenth of them; to be called at least as often. */
    void keepUp()
    {
        constexpr auto millisecondsPerState = 10;

        if (juce::Time::getMillisecondCounterHiRes() - start < (double) numStates * millisecondsPerState)
            return;

        processor.setStateInformation (state.getData(), (int) state.getSize());

        if (++numStates % 10 == 0)
        {
            processor.getPresetsManager().loadPreset (preset);
            ++numPresets;
        }
    }

    int numStates = 0;
    int numPresets = 0;

private:
    cv::varlo::AudioPluginAudioProcessor& processor;
    const juce::File preset = processor.getPresetsManager().getLocations().userFolder.getChildFile ("a.cvpreset");
    juce::MemoryBlock state;
    const double start = juce::Time::getMillisecondCounterHiRes();
};

void printReport (const Recording& recording, const Load& load)
{
    std::vector<double> cpu, wall;

    for (const auto& block : recording.blocks)
    {
        cpu.push_back (block.cpuNanoseconds);
        wall.push_back (block.wallNanoseconds);
    }

    std::cout << recording.blocks.size() << " blocks of " << blockLength << " samples, " << load.numStates
              << " states, " << load.numPresets << " presets; in brackets: multiples of the mean\n";
    printTimes ("CPU time ", cpu);
    printTimes ("wall time", wall);
    std::cout << "waits within blocks: " << recording.numWaits << std::endl;
}

/** Plays in time; under load, presets load, states are restored a hundred times a second and an editor is open
    meanwhile.
*/
int measureBlocks (double seconds, bool isUnderLoad)
{
    const cv::test::TemporaryHome home;
    ProcessorHarness harness;
    harness.prepare (sampleRateHz, blockLength);
    const std::unique_ptr<juce::AudioProcessorEditor> editor (harness.processor.createEditorIfNeeded());

    if (isUnderLoad)
    {
        editor->addToDesktop (0);
        editor->setVisible (true);
    }

    Load load (harness);
    Recording recording;
    std::atomic<bool> isDone = false;
    std::thread audio (
        [&]
        {
            recording = playInTime (harness, seconds);
            isDone = true;
        });

    while (! isDone)
    {
        cv::test::runMessageLoopFor (1);

        if (isUnderLoad)
            load.keepUp();
    }

    audio.join();
    harness.processor.editorBeingDeleted (editor.get());
    printReport (recording, load);
    return 0;
}

double median (std::vector<double> values)
{
    const auto middle = values.begin() + (std::ptrdiff_t) values.size() / 2;
    std::nth_element (values.begin(), middle, values.end());
    return *middle;
}

/** Plays a burst at full feedback and silence behind it, as fast as it goes, and compares their costs. The burst goes
    on in a second instance, a second of it for each second of silence, so that both meet the same machine.
*/
int measureSilence (double seconds)
{
    constexpr auto maxRatio = 1.1;
    constexpr auto secondsPerMinute = 60;
    ProcessorHarness silent, loud;

    for (auto* harness : { &silent, &loud })
    {
        harness->set ("feedback", 100.0f);
        harness->prepare (sampleRateHz, blockLength);
    }

    Player silentPlayer (silent), loudPlayer (loud);

    for (auto block = 0; block < 10 * blocksPerSecond; ++block)
    {
        silentPlayer.play (true);
        loudPlayer.play (true);
    }

    std::vector<double> ratios, costs;

    for (auto minute = 0; minute < juce::roundToInt (seconds / secondsPerMinute); ++minute)
    {
        std::vector<double> ofSilence, ofBurst;

        for (auto second = 0; second < secondsPerMinute; ++second)
        {
            for (auto block = 0; block < blocksPerSecond; ++block)
                ofSilence.push_back (silentPlayer.play (false).cpuNanoseconds);

            for (auto block = 0; block < blocksPerSecond; ++block)
                ofBurst.push_back (loudPlayer.play (true).cpuNanoseconds);
        }

        // Medians leave out what interrupts have taken.
        costs.push_back (median (ofSilence));
        ratios.push_back (costs.back() / median (ofBurst));
    }

    const auto [least, most] = std::minmax_element (ratios.begin(), ratios.end());
    std::cout << "a block of silence against one of the burst, medians of each of " << ratios.size()
              << " minutes: " << juce::String (*least, 3) << " to " << juce::String (*most, 3) << ", in the last "
              << juce::String (ratios.back(), 3) << " (" << juce::String (costs.back(), 0) << " ns)" << std::endl;
    return *most <= maxRatio ? 0 : 1;
}
} // namespace

// varlo_block_times alone|load|silence SECONDS
int main (int argc, char** argv)
{
    const juce::StringArray arguments (argv + 1, argc - 1);
    const auto seconds = arguments[1].getDoubleValue();

    if (arguments.size() != 2 || seconds <= 0.0
        || ! juce::StringArray { "alone", "load", "silence" }.contains (arguments[0]))
    {
        std::cerr << "usage: varlo_block_times alone|load|silence SECONDS" << std::endl;
        return 2;
    }

    const cv::test::DisplayAtoms displayAtoms;
    const juce::ScopedJuceInitialiser_GUI juceInitialiser;
    return arguments[0] == "silence" ? measureSilence (seconds) : measureBlocks (seconds, arguments[0] == "load");
}
