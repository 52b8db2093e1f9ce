#include "render/RenderError.h"
#include "soak/Options.h"
#include "soak/Soak.h"
#include "soak/SoakPresets.h"
#include "support/TemporaryHome.h"

#include <iostream>

namespace cv::soak
{
namespace
{
constexpr auto help =
    R"(Opens, plays, drags and closes the built plug-in on the display, at random, and looks for faults.

  varlo_soak [--seconds N] [--seed S] [--speed F]

  --seconds N   how long (default: 60)
  --seed S      a whole number; the same one does the same things (default: 1)
  --speed F     2 plays twice as fast as it sounds (default: 1)

Exit codes: 0 no fault, 1 a fault, 2 command line not understood, 3 stuck, 77 no display.
)";

Soak::Options parse (const juce::StringArray& arguments)
{
    Soak::Options options;
    options.bundle = juce::File (VARLO_BUNDLE);

    for (auto i = 0; i < arguments.size(); ++i)
    {
        const auto& name = arguments[i];

        if (name == "--seconds")
            options.seconds = parsePositive (name, arguments[++i]);
        else if (name == "--seed")
            options.seed = parseSeed (arguments[++i]);
        else if (name == "--speed")
            options.speed = parsePositive (name, arguments[++i]);
        else
            throw render::UsageError ("unknown option " + name);
    }

    return options;
}

int run (const juce::StringArray& arguments)
{
    const auto options = parse (arguments);

    if (! hasDisplay())
    {
        std::cout << "no display" << std::endl;
        return skippedExitCode;
    }

    const test::TemporaryHome home;
    writePresets (home.getFolder());

    // Told at once, for a run that doesn't come to its report.
    std::cout << "seed " << options.seed << ", " << options.seconds << " s" << std::endl;

    Soak soak (options);
    soak.run();
    return soak.report() ? 0 : 1;
}
} // namespace
} // namespace cv::soak

int main (int argc, char** argv)
{
    juce::StringArray arguments (argv + 1, argc - 1);

    if (arguments.contains ("--help"))
    {
        std::cout << cv::soak::help;
        return 0;
    }

    const juce::ScopedJuceInitialiser_GUI juceInitialiser;

    try
    {
        return cv::soak::run (arguments);
    }
    catch (const cv::render::RenderError& error)
    {
        std::cerr << "varlo_soak: " << error.what() << std::endl;
        return error.getExitCode();
    }
}
