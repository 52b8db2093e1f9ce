#include "render/EditorFrame.h"
#include "render/PluginHost.h"
#include "support/DisplayAtoms.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>

// How long a host and its user wait: for the bundle with its first instance, the first editor, and a second one of
// each. Every round loads the bundle anew; the least and the median of all rounds are printed.

namespace
{
class Watch
{
public:
    template <typename Work>
    void measure (const char* what, Work&& work)
    {
        const auto start = juce::Time::getMillisecondCounterHiRes();
        work();
        milliseconds[what].push_back (juce::Time::getMillisecondCounterHiRes() - start);
    }

    void print()
    {
        for (auto& [what, all] : milliseconds)
        {
            std::sort (all.begin(), all.end());
            std::printf ("%-36s least %7.2f ms, median %7.2f ms\n", what.c_str(), all.front(), all[all.size() / 2]);
        }
    }

private:
    std::map<std::string, std::vector<double>> milliseconds;
};

/** Shows an editor and waits until it has been painted. */
std::unique_ptr<cv::render::EditorFrame> openEditor (cv::render::PluginHost& host)
{
    auto frame = std::make_unique<cv::render::EditorFrame> (host.getInstance());
    frame->show();
    juce::MessageManager::getInstance()->runDispatchLoopUntil (1);
    return frame;
}
} // namespace

int main (int argc, char** argv)
{
    const auto numRounds = argc == 2 ? std::atoi (argv[1]) : 0;

    if (numRounds < 1)
    {
        std::fprintf (stderr, "usage: %s ROUNDS\n", argv[0]);
        return 2;
    }

    const cv::test::DisplayAtoms displayAtoms;
    const juce::ScopedJuceInitialiser_GUI juceInitialiser;
    const auto hasDisplay = ! juce::Desktop::getInstance().getDisplays().displays.isEmpty();
    const juce::File bundle (VARLO_BUNDLE);
    Watch watch;

    for (int round = 0; round < numRounds; ++round)
    {
        std::unique_ptr<cv::render::PluginHost> first, second;
        watch.measure ("1 bundle and first instance",
                       [&] { first = std::make_unique<cv::render::PluginHost> (bundle); });
        watch.measure ("2 second instance", [&] { second = std::make_unique<cv::render::PluginHost> (bundle); });

        if (! hasDisplay)
            continue;

        std::unique_ptr<cv::render::EditorFrame> firstEditor, secondEditor;
        watch.measure ("3 first editor", [&] { firstEditor = openEditor (*first); });
        watch.measure ("4 second editor", [&] { secondEditor = openEditor (*second); });
    }

    watch.print();

    if (! hasDisplay)
        std::printf ("editors: skipped, there is no display\n");

    return 0;
}
