#include "support/Program.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cv::test
{
Program::Program (const juce::File& executable, const juce::File& home)
{
    const auto path = executable.getFullPathName().toStdString();
    const auto homePath = home.getFullPathName().toStdString();
    const auto output = open (scratch.getFile ("output").getFullPathName().toRawUTF8(), O_CREAT | O_WRONLY, 0600);

    process = fork();

    if (process == 0)
    {
        dup2 (output, STDOUT_FILENO);
        dup2 (output, STDERR_FILENO);
        setenv ("HOME", homePath.c_str(), 1);
        execl (path.c_str(), path.c_str(), nullptr);
        _exit (127);
    }

    close (output);
}

Program::~Program()
{
    if (isRunning())
    {
        sendSignal (SIGKILL);
        waitpid (process, nullptr, 0);
    }
}

std::optional<int> Program::waitForEnd (int timeoutMilliseconds)
{
    const auto start = juce::Time::getMillisecondCounter();

    while (! exitCode)
    {
        auto status = 0;

        if (waitpid (process, &status, WNOHANG) != 0)
            exitCode = WIFEXITED (status) ? WEXITSTATUS (status) : 128 + WTERMSIG (status);
        else if (juce::Time::getMillisecondCounter() - start >= (juce::uint32) timeoutMilliseconds)
            break;
        else
            juce::Thread::sleep (10);
    }

    return exitCode;
}

void Program::sendSignal (int signal) const
{
    kill (process, signal);
}

juce::String Program::getText() const
{
    return scratch.getFile ("output").loadFileAsString();
}
} // namespace cv::test
