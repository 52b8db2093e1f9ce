#pragma once

#include "support/MessageLoop.h"
#include "support/TemporaryHome.h"

#include <juce_events/juce_events.h>

#include <cstdio>
#include <cstdlib>

/** One input for a fuzzer: libFuzzer's name for what each of them defines. Returns 0. */
extern "C" int LLVMFuzzerTestOneInput (const unsigned char* data, size_t size);

namespace cv::fuzz
{
/** What every fuzzer needs around the plug-in: a message thread, and a home of its own that goes with the
    program. Made by the first input, on libFuzzer's one thread. JUCE is never shut down: what that needs may be
    gone when the program ends.
*/
class Environment
{
public:
    static Environment& get()
    {
        static auto& environment = *new Environment;
        return environment;
    }

    juce::File getFile (const juce::String& name) const { return home.getFile (name); }

    /** Delivers now and then what the plug-in has posted meanwhile. */
    void deliverMessages()
    {
        constexpr auto inputsBetween = 64;

        if (++numInputs % inputsBetween == 0)
            cv::test::runMessageLoopFor (1);
    }

private:
    Environment()
    {
        std::atexit (
            []
            {
                get().home.getFolder().deleteRecursively();
                std::fflush (nullptr);
                std::_Exit (EXIT_SUCCESS);
            });
    }

    const cv::test::TemporaryHome home;
    const juce::ScopedJuceInitialiser_GUI juceInitialiser;
    int numInputs = 0;
};

/** Ends the program where something isn't as it must be, so that libFuzzer keeps the input. */
inline void require (bool condition, const char* what)
{
    if (condition)
        return;

    std::fprintf (stderr, "not as it must be: %s\n", what);
    std::abort();
}
} // namespace cv::fuzz
