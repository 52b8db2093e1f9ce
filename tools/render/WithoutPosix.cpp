// What stands in for PosixProcess.cpp and Crash.cpp on systems that aren't POSIX, with nothing but the C++ standard
// library. A crash is told there in the system's own way.

#include "Crash.h"
#include "Interruption.h"
#include "StandardStreams.h"

#include <csignal>
#include <initializer_list>

namespace cv::render
{
void installSignalHandlers()
{
    for (const auto signal : { SIGINT, SIGTERM })
        if (std::signal (signal, noteInterruption) == SIG_IGN)
            std::signal (signal, SIG_IGN);
}

void turnWriteSignalsIntoErrors() {}

void keepStandardPlaces() {}

bool isErrorStreamATerminal()
{
    return false;
}

void installCrashHandlers() {}

void deleteOnCrash (const juce::File&) {}

void keepOnCrash (const juce::File&) {}
} // namespace cv::render
