#include "render/RenderError.h"
#include "soak/Options.h"
#include "soak/SoakPresets.h"
#include "storm/Storm.h"
#include "support/TemporaryHome.h"

#include <cstdlib>
#include <iostream>

namespace cv::storm
{
namespace
{
constexpr auto help =
    R"(Has many instances of the built plug-in and a few of their editors created, played, clicked and destroyed on the
display, at random, and looks for faults.

  varlo_storm [--seconds N] [--seed S] [--instances I] [--editors E]

  --seconds N    how long (default: 60)
  --seed S       a whole number; the same one does the same things (default: 1)
  --instances I  how many at once, as many as editors at least (default: 64)
  --editors E    of how many the editor is open at most (default: 8)

Exit codes: 0 no fault, 1 a fault, 2 command line not understood, 3 stuck, 77 no display.
)";

Storm::Options parse (const juce::StringArray& arguments)
{
    Storm::Options options;
    options.bundle = juce::File (VARLO_BUNDLE);

    for (auto i = 0; i < arguments.size(); ++i)
    {
        const auto& name = arguments[i];

        if (name == "--seconds")
            options.seconds = soak::parsePositive (name, arguments[++i]);
        else if (name == "--seed")
            options.seed = soak::parseSeed (arguments[++i]);
        else if (name == "--instances")
            options.numInstances = (int) soak::parsePositive (name, arguments[++i]);
        else if (name == "--editors")
            options.numEditors = (int) soak::parsePositive (name, arguments[++i]);
        else
            throw render::UsageError ("unknown option " + name);
    }

    options.numInstances = juce::jmax (options.numInstances, options.numEditors);
    return options;
}

int run (const juce::StringArray& arguments)
{
    const auto options = parse (arguments);

    if (! soak::hasDisplay())
    {
        std::cout << "no display" << std::endl;
        return soak::skippedExitCode;
    }

    const test::TemporaryHome home;
    soak::writePresets (home.getFolder());

    // Clicks at random find the links too, which then have no browser and no file manager to open.
    setenv ("PATH", home.getFolder().getFullPathName().toRawUTF8(), 1);

    // Told at once, for a run that doesn't come to its report.
    std::cout << "seed " << options.seed << ", " << options.seconds << " s" << std::endl;

    Storm storm (options);
    storm.run();
    return storm.report() ? 0 : 1;
}
} // namespace
} // namespace cv::storm

int main (int argc, char** argv)
{
    juce::StringArray arguments (argv + 1, argc - 1);

    if (arguments.contains ("--help"))
    {
        std::cout << cv::storm::help;
        return 0;
    }

    const juce::ScopedJuceInitialiser_GUI juceInitialiser;

    try
    {
        return cv::storm::run (arguments);
    }
    catch (const cv::render::RenderError& error)
    {
        std::cerr << "varlo_storm: " << error.what() << std::endl;
        return error.getExitCode();
    }
}
