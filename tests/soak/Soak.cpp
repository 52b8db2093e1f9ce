#include "soak/Soak.h"

#include "render/RenderError.h"
#include "soak/MessageTurns.h"

#include <iostream>
#include <numeric>

namespace cv::soak
{
namespace
{
constexpr auto bytesPerMegabyte = 1024.0 * 1024.0;

juce::String toMegabytes (juce::int64 bytes)
{
    return juce::String ((double) bytes / bytesPerMegabyte, 1) + " MB";
}
} // namespace

Soak::Soak (const Options& optionsToUse)
    : options (optionsToUse)
    , random (options.seed)
    , host (options.bundle)
    , audio (host.getInstance(), options.speed, options.seed)
    , pluginActions (host.getInstance(), random)
    , editorActions (host.getInstance(), pluginActions, display, mouse, random)
    , actions (makeActions())
{
    if (! mouse.isUsable())
        throw render::RenderError ("the display takes no mouse events from programs (no XTEST extension)");
}

std::vector<Soak::Action> Soak::makeActions()
{
    auto& editor = editorActions;
    auto& plugin = pluginActions;

    return { { "open the editor", 0, 4, [&] { return editor.open(); } },
             { "close the editor", 2, 0, [&] { return editor.close(); } },
             { "resize from the host", 3, 0, [&] { return editor.resize(); } },
             { "drag the corner", 3, 0, [&] { return editor.dragCorner(); } },
             { "step presets", 4, 0, [&] { return editor.stepPreset(); } },
             { "choose from the menu", 2, 0, [&] { return editor.chooseFromMenu(); } },
             { "dismiss the menu", 1, 0, [&] { return editor.dismissMenu(); } },
             { "drag a knob", 6, 0, [&] { return editor.dragKnob(); } },
             { "tap", 2, 0, [&] { return editor.tap(); } },
             { "automate", 3, 1, [&] { return plugin.automate(); } },
             { "save the state", 2, 1, [&] { return plugin.saveState(); } },
             { "load a state", 2, 1, [&] { return plugin.loadState(); } } };
}

void Soak::run()
{
    // The warm-up makes all that is made once: fonts, caches of glyphs, pools of memory. From then on each round
    // gives back what it takes, so that both measurements are of the same: a closed editor.
    constexpr auto warmUpProportion = 0.25;
    constexpr auto minWarmUpSeconds = 10.0;
    const auto warmUpSeconds = juce::jmax (minWarmUpSeconds, warmUpProportion * options.seconds);

    runUntil (juce::jmin (warmUpSeconds, options.seconds));
    firstMemory = closeAndMeasure();
    runUntil (options.seconds);
    lastMemory = closeAndMeasure();
}

void Soak::runUntil (double secondsFromStart)
{
    while (juce::Time::getMillisecondCounterHiRes() - startMilliseconds < secondsFromStart * 1000.0)
        performOne();
}

void Soak::performOne()
{
    const auto getWeight = [this] (const Action& action)
    { return editorActions.isOpen() ? action.weightWhenOpen : action.weightWhenClosed; };

    auto ticket = random.nextInt (std::accumulate (
        actions.begin(), actions.end(), 0, [&] (int sum, const auto& action) { return sum + getWeight (action); }));

    for (auto& action : actions)
    {
        ticket -= getWeight (action);

        if (ticket >= 0)
            continue;

        ++action.numTries;
        action.numEffects += action.perform() ? 1 : 0;
        break;
    }

    runMessagesFor (random.nextInt (100));
}

juce::int64 Soak::closeAndMeasure()
{
    constexpr auto settlingMilliseconds = 500;

    if (editorActions.isOpen())
        editorActions.close();

    runMessagesFor (settlingMilliseconds);
    return Watch::measureMemory();
}

juce::StringArray Soak::findFaults() const
{
    // The thread that delivers the messages shares a busy machine with the compilers of others.
    constexpr auto maxStallMilliseconds = 5000.0;
    juce::StringArray faults;

    for (const auto& action : actions)
        if (action.numEffects * 2 < action.numTries)
            faults.add (juce::String (action.name) + ": without effect more often than not");

    if (audio.getNumBadSamples() > 0)
        faults.add (juce::String (audio.getNumBadSamples()) + " samples are no numbers or beyond the limit");

    if (audio.getPeak() <= 0.0f)
        faults.add ("nothing was heard");

    if (Watch::getNumDisplayErrors() > 0)
        faults.add (juce::String (Watch::getNumDisplayErrors())
                    + " errors of the display, first: " + Watch::getFirstDisplayError());

    if (watch.getLongestStall() > maxStallMilliseconds)
        faults.add ("messages had to wait for " + juce::String (watch.getLongestStall() / 1000.0, 1) + " s");

#if ! VARLO_IS_INSTRUMENTED
    // Eight minutes with a hundred editors have ended where they began, single minutes within half a megabyte. The
    // rest is room for the allocators of other machines. Sanitizers keep what is given back.
    constexpr auto maxGrowthBytes = (juce::int64) (5.0 * bytesPerMegabyte);

    if (lastMemory - firstMemory > maxGrowthBytes)
        faults.add ("memory has grown by more than " + toMegabytes (maxGrowthBytes));
#endif

    return faults;
}

bool Soak::report()
{
    for (const auto& action : actions)
        std::cout << juce::String (action.name).paddedRight (' ', 28)
                  << juce::String (action.numTries).paddedLeft (' ', 6) << " times, " << action.numEffects
                  << " with effect\n";

    std::cout << audio.getNumBlocks() << " blocks of sound, peak " << juce::String (audio.getPeak(), 3) << "\n"
              << "longest wait of a message: " << juce::roundToInt (watch.getLongestStall()) << " ms\n"
              << "memory: " << toMegabytes (firstMemory) << " after the warm-up, " << toMegabytes (lastMemory)
              << " at the end\n"
              << "seed: " << options.seed << std::endl;

    const auto faults = findFaults();

    for (const auto& fault : faults)
        std::cout << "FAILED: " << fault << std::endl;

    return faults.isEmpty();
}
} // namespace cv::soak
