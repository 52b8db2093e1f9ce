#include "soak/Watch.h"

#include <cstdlib>
#include <fstream>
#include <iostream>

#include <malloc.h>
#include <unistd.h>

#include <X11/Xlib.h>

namespace cv::soak
{
namespace
{
std::atomic<int> numDisplayErrors = 0;
juce::String firstDisplayError;
juce::CriticalSection firstDisplayErrorLock;

int noteDisplayError (::Display* display, XErrorEvent* error)
{
    if (numDisplayErrors++ > 0)
        return 0;

    char text[256] {};
    XGetErrorText (display, error->error_code, text, (int) sizeof (text));

    const juce::ScopedLock lock (firstDisplayErrorLock);
    firstDisplayError = juce::String (text) + ", request " + juce::String ((int) error->request_code) + "."
                        + juce::String ((int) error->minor_code);
    return 0;
}
} // namespace

Watch::Watch() : lastTurn (juce::Time::getMillisecondCounterHiRes())
{
    constexpr auto intervalMilliseconds = 20;

    XSetErrorHandler (noteDisplayError);
    startTimer (intervalMilliseconds);
    thread = std::thread ([this] { endStuckProcess(); });
}

Watch::~Watch()
{
    shouldStop = true;
    thread.join();
}

int Watch::getNumDisplayErrors()
{
    return numDisplayErrors;
}

juce::String Watch::getFirstDisplayError()
{
    const juce::ScopedLock lock (firstDisplayErrorLock);
    return firstDisplayError;
}

void Watch::timerCallback()
{
    const auto now = juce::Time::getMillisecondCounterHiRes();
    longestStallMilliseconds = juce::jmax (longestStallMilliseconds, now - lastTurn);
    lastTurn = now;
}

void Watch::endStuckProcess() const
{
    // Whoever waits that long waits for ever.
    constexpr auto limitMilliseconds = 60000.0;
    constexpr auto stuckExitCode = 3;

    while (! shouldStop)
    {
        juce::Thread::sleep (100);

        if (juce::Time::getMillisecondCounterHiRes() - lastTurn > limitMilliseconds)
        {
            std::cout << "FAILED: the message thread is stuck" << std::endl;
            std::_Exit (stuckExitCode);
        }
    }
}

juce::int64 Watch::measureMemory()
{
    malloc_trim (0);

    juce::int64 numPages = 0, numResidentPages = 0;
    std::ifstream ("/proc/self/statm") >> numPages >> numResidentPages;
    return numResidentPages * sysconf (_SC_PAGESIZE);
}
} // namespace cv::soak
