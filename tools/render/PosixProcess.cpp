// What this program asks of POSIX systems about itself, but for crashes; WithoutPosix.cpp takes its place elsewhere.

#include "Interruption.h"
#include "StandardStreams.h"

#include <csignal>
#include <fcntl.h>
#include <initializer_list>
#include <unistd.h>

namespace cv::render
{
void installSignalHandlers()
{
    for (const auto signal : { SIGINT, SIGTERM, SIGHUP })
    {
        struct sigaction inherited
        {
        };

        sigaction (signal, nullptr, &inherited);

        if (inherited.sa_handler != SIG_IGN)
            std::signal (signal, noteInterruption);
    }
}

void turnWriteSignalsIntoErrors()
{
    for (const auto signal : { SIGPIPE, SIGXFSZ })
        std::signal (signal, SIG_IGN);
}

void keepStandardPlaces()
{
    // A new file gets the lowest place that is free. What is only open for reading refuses what is printed there.
    for (auto place = STDIN_FILENO; place <= STDERR_FILENO; ++place)
        if (fcntl (place, F_GETFD) < 0 && open ("/dev/null", O_RDONLY) < 0)
            break;
}

bool isErrorStreamATerminal()
{
    return isatty (STDERR_FILENO) != 0;
}
} // namespace cv::render
