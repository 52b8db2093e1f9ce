#include "Interruption.h"

#include "RenderError.h"

#include <csignal>

namespace cv::render
{
namespace
{
volatile std::sig_atomic_t interrupted = 0;

void handleSignal (int)
{
    interrupted = 1;
}
} // namespace

void installSignalHandlers()
{
    for (const auto signal : { SIGINT, SIGTERM, SIGHUP })
    {
        struct sigaction inherited
        {
        };

        sigaction (signal, nullptr, &inherited);

        if (inherited.sa_handler != SIG_IGN)
            std::signal (signal, handleSignal);
    }
}

void turnWriteSignalsIntoErrors()
{
    for (const auto signal : { SIGPIPE, SIGXFSZ })
        std::signal (signal, SIG_IGN);
}

void throwIfInterrupted()
{
    if (interrupted != 0)
        throw RenderError ("interrupted; nothing was written", RenderError::interruptedExitCode);
}
} // namespace cv::render
