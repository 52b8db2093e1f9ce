#include "storm/Storm.h"

#include "render/RenderError.h"
#include "soak/MessageTurns.h"

#include <iostream>
#include <numeric>

namespace cv::storm
{
namespace
{
/** What is rarer may not happen in a short run. */
constexpr auto rareWeight = 10;

juce::PluginDescription describe (juce::VST3PluginFormat& format, const juce::File& bundle)
{
    juce::OwnedArray<juce::PluginDescription> descriptions;
    format.findAllTypesForFile (descriptions, bundle.getFullPathName());

    if (descriptions.isEmpty())
        throw render::RenderError ("can't be loaded as a VST3 plug-in: " + bundle.getFullPathName());

    return *descriptions.getFirst();
}
} // namespace

Storm::Storm (const Options& optionsToUse)
    : options (optionsToUse)
    , random (options.seed)
    , description (describe (format, options.bundle))
    , instances ((size_t) options.numInstances)
    , actions (makeActions())
    , audio (instances, numAudioThreads, options.seed)
{
    if (! mouse.isUsable())
        throw render::RenderError ("the display takes no mouse events from programs (no XTEST extension)");
}

Storm::~Storm()
{
    empty();
}

std::vector<Storm::Action> Storm::makeActions()
{
    return { { "create an instance", 80, [this] { return create(); } },
             { "destroy an instance", 50, [this] { return destroy(); } },
             { "destroy all, create all", 1, [this] { return destroyAll(); } },
             { "prepare", 60, [this] { return prepare(); } },
             { "release", 10, [this] { return release(); } },
             { "save a state", 40, [this] { return saveState(); } },
             { "restore a state", 80, [this] { return restoreState(); } },
             { "move all parameters", 80, [this] { return moveParameters(); } },
             { "open an editor", 60, [this] { return openEditor(); } },
             { "close an editor", 20, [this] { return closeEditor(); } },
             { "leave in the midst", 30, [this] { return leaveInTheMidst(); } },
             { "resize an editor", 20, [this] { return resizeEditor(); } },
             { "click", 120, [this] { return click(); } },
             { "drag", 60, [this] { return drag(); } } };
}

void Storm::run()
{
    // The warm-up makes all that is made once: fonts, caches of glyphs, pools of memory.
    constexpr auto warmUpProportion = 0.25;

    runFor (warmUpProportion * options.seconds);
    before = emptyAndMeasure (nullptr);
    numCreatedBefore = numCreated;
    runFor ((1.0 - warmUpProportion) * options.seconds);
    after = emptyAndMeasure (&before);
}

void Storm::runFor (double seconds)
{
    fill();
    const auto start = juce::Time::getMillisecondCounterHiRes();

    while (juce::Time::getMillisecondCounterHiRes() - start < seconds * 1000.0)
        performOne();
}

void Storm::empty()
{
    soak::deliverSentMessages();
    editors.clear();

    for (auto& instance : instances)
        instance.replace (nullptr);
}

void Storm::fill()
{
    for (auto& instance : instances)
    {
        if (instance.get() != nullptr)
            continue;

        instance.replace (createPlugin());
        prepare (instance);
        soak::runMessagesFor (0);
    }

    while (editors.size() < (size_t) options.numEditors)
        openEditor();
}

void Storm::performOne()
{
    auto ticket = random.nextInt (std::accumulate (actions.begin(), actions.end(), 0,
                                                   [] (int sum, const auto& action) { return sum + action.weight; }));

    for (auto& action : actions)
    {
        ticket -= action.weight;

        if (ticket >= 0)
            continue;

        action.numTimes += action.perform() ? 1 : 0;
        break;
    }

    // Most of the time the next thing happens before what this one has set off.
    if (random.nextInt (4) == 0)
        soak::runMessagesFor (random.nextInt (20));
}

ProcessUse Storm::emptyAndMeasure (const ProcessUse* expected)
{
    // What ends by itself may be kept waiting by whoever shares the machine.
    constexpr auto settlingMilliseconds = 500;
    constexpr auto limitMilliseconds = 30000;

    empty();
    soak::runMessagesFor (settlingMilliseconds);
    auto use = ProcessUse::measure();

    if (expected != nullptr)
        soak::runMessagesUntil (
            [&]
            {
                use = ProcessUse::measure();
                return use.numThreads <= expected->numThreads && use.numOpenFiles <= expected->numOpenFiles;
            },
            limitMilliseconds);

    return use;
}

juce::StringArray Storm::findFaults() const
{
    juce::StringArray faults;

    for (const auto& action : actions)
        if (action.numTimes == 0 && action.weight > rareWeight)
            faults.add (juce::String (action.name) + ": never happened");

    if (audio.getNumBadSamples() > 0)
        faults.add (juce::String (audio.getNumBadSamples()) + " samples are no numbers or beyond the limit");

    if (audio.getPeak() <= 0.0f)
        faults.add ("nothing was heard");

    if (soak::Watch::getNumDisplayErrors() > 0)
        faults.add (juce::String (soak::Watch::getNumDisplayErrors())
                    + " errors of the display, first: " + soak::Watch::getFirstDisplayError());

    if (after.numThreads > before.numThreads)
        faults.add ("threads are left");

    if (after.numOpenFiles > before.numOpenFiles)
        faults.add ("files are left open");

#if ! VARLO_IS_INSTRUMENTED
    // Sanitizers keep what is given back. The first megabyte is for caches that the warm-up has not filled.
    constexpr auto bytesPerMegabyte = (juce::int64) 1024 * 1024;
    constexpr auto cyclesPerMegabyte = 100;
    const auto limit = bytesPerMegabyte * (1 + (numCreated - numCreatedBefore) / cyclesPerMegabyte);

    if (after.heapBytes - before.heapBytes > limit)
        faults.add ("the heap has grown");
#endif

    return faults;
}

bool Storm::report()
{
    for (const auto& action : actions)
        std::cout << juce::String (action.name).paddedRight (' ', 24)
                  << juce::String (action.numTimes).paddedLeft (' ', 7) << " times\n";

    std::cout << audio.getNumBlocks() << " blocks of sound, peak " << juce::String (audio.getPeak(), 3) << "\n"
              << "longest wait of a message: " << juce::roundToInt (watch.getLongestStall()) << " ms\n"
              << "without instances, after " << numCreatedBefore << ": " << before.toString() << "\n"
              << "without instances, after " << numCreated << ": " << after.toString() << "\n"
              << "seed: " << options.seed << std::endl;

    const auto faults = findFaults();

    for (const auto& fault : faults)
        std::cout << "FAILED: " << fault << std::endl;

    return faults.isEmpty();
}

size_t Storm::pickIndex()
{
    return (size_t) random.nextInt (options.numInstances);
}

juce::AudioPluginInstance* Storm::pickPlugin()
{
    return instances[pickIndex()].get();
}

render::EditorFrame* Storm::pickEditor()
{
    return editors.empty() ? nullptr : editors[(size_t) random.nextInt ((int) editors.size())].frame.get();
}

std::unique_ptr<juce::AudioPluginInstance> Storm::createPlugin()
{
    constexpr auto sampleRateHz = 44100.0;
    constexpr auto blockLength = 512;
    juce::String error;
    auto plugin = format.createInstanceFromDescription (description, sampleRateHz, blockLength, error);

    if (plugin == nullptr)
        throw render::RenderError ("instance " + juce::String (numCreated) + " was refused: " + error);

    ++numCreated;
    return plugin;
}
} // namespace cv::storm
