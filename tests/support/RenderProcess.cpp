#include "support/RenderProcess.h"

#include "support/Alarms.h"

#include <gtest/gtest.h>

#include <csignal>
#include <fcntl.h>
#include <pty.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace cv::test
{
namespace
{
std::vector<std::string> makeEnvironment (const RenderProcess::Options& options)
{
    std::vector<std::string> result;

    for (auto** entry = environ; *entry != nullptr; ++entry)
    {
        const std::string text (*entry);

        if (options.environment.count (text.substr (0, text.find ('='))) == 0)
            result.push_back (text);
    }

    for (const auto& [name, value] : options.environment)
        if (value)
            result.push_back (name + "=" + *value);

    return result;
}

std::vector<char*> toPointers (std::vector<std::string>& strings)
{
    std::vector<char*> pointers;

    for (auto& string : strings)
        pointers.push_back (string.data());

    pointers.push_back (nullptr);
    return pointers;
}

int openForWriting (const juce::File& file)
{
    return open (file.getFullPathName().toRawUTF8(), O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
}

juce::String readTerminal (int terminal)
{
    juce::MemoryOutputStream text;
    char data[256];

    // With its last writer gone a terminal gives an error, not an end of file.
    for (auto count = read (terminal, data, sizeof (data)); count > 0; count = read (terminal, data, sizeof (data)))
        text.write (data, (size_t) count);

    return text.toUTF8();
}

/** Takes out the line that a debug build of JUCE greets with, once in the program and once in the
    plug-in.
*/
juce::String withoutGreeting (const juce::String& text)
{
    const auto greeting = juce::SystemStats::getJUCEVersion();
    return text.replace (greeting + "\r\n", "").replace (greeting + "\n", "");
}
} // namespace

RenderProcess::RenderProcess (juce::StringArray arguments) : RenderProcess (std::move (arguments), Options {}) {}

RenderProcess::RenderProcess (juce::StringArray arguments, const Options& options)
{
    if (options.useBuiltBundle && ! arguments.contains ("--plugin"))
        arguments.addArray ({ "--plugin", VARLO_BUNDLE });

    std::vector<std::string> argumentTexts { options.program.value_or (VARLO_RENDER) };

    if (options.firstArgument)
        argumentTexts.push_back (*options.firstArgument);

    for (const auto& argument : arguments)
        argumentTexts.push_back (argument.toStdString());

    auto environmentTexts = makeEnvironment (options);
    const auto argumentPointers = toPointers (argumentTexts);
    const auto environmentPointers = toPointers (environmentTexts);

    const auto output =
        openForWriting (options.stdoutPath && options.stdoutPath->isNotEmpty() ? juce::File (*options.stdoutPath)
                                                                               : scratch.getFile ("stdout"));
    auto errors = -1;

    if (! options.stderrIsTerminal)
        errors = openForWriting (scratch.getFile ("stderr"));
    else if (openpty (&terminal, &errors, nullptr, nullptr, nullptr) != 0)
        ADD_FAILURE() << "no terminal to be had";

    process = fork();

    if (process == 0)
    {
        dup2 (output, STDOUT_FILENO);
        dup2 (errors, STDERR_FILENO);

        if (options.stdoutPath && options.stdoutPath->isEmpty())
            close (STDOUT_FILENO);

        for (const auto ignored : options.ignoredSignals)
            std::signal (ignored, SIG_IGN);

        if (options.maxFileSize)
        {
            const rlimit limit { *options.maxFileSize, *options.maxFileSize };
            setrlimit (RLIMIT_FSIZE, &limit);
        }

        execve (argumentPointers[0], argumentPointers.data(), environmentPointers.data());
        _exit (127);
    }

    close (output);
    close (errors);
}

RenderProcess::~RenderProcess()
{
    if (process > 0)
    {
        sendSignal (SIGKILL);
        waitpid (process, nullptr, 0);
    }

    if (terminal >= 0)
        close (terminal);
}

void RenderProcess::sendSignal (int signal) const
{
    kill (process, signal);
}

RenderProcess::Result RenderProcess::wait()
{
    Result result;

    if (terminal >= 0)
        result.errors = readTerminal (terminal);

    auto status = 0;
    waitpid (process, &status, 0);
    process = -1;

    result.exitCode = WIFEXITED (status) ? WEXITSTATUS (status) : 128 + WTERMSIG (status);
    result.output = scratch.getFile ("stdout").loadFileAsString();

    if (terminal < 0)
        result.errors = scratch.getFile ("stderr").loadFileAsString();

    result.errors = withoutGreeting (result.errors);

    expectNoAlarm (result.errors);
    return result;
}

RenderProcess::Result RenderProcess::run (const juce::StringArray& arguments, const Options& options)
{
    return RenderProcess (arguments, options).wait();
}

RenderProcess::Result RenderProcess::runWell (const juce::StringArray& arguments, const Options& options)
{
    auto result = run (arguments, options);
    EXPECT_EQ (result.exitCode, 0) << arguments.joinIntoString (" ");
    EXPECT_EQ (result.errors, juce::String());
    return result;
}
} // namespace cv::test
