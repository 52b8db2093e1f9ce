#include "Crash.h"

#include "RenderError.h"

#include <array>
#include <atomic>
#include <climits>
#include <csignal>
#include <cstring>
#include <exception>
#include <unistd.h>

namespace cv::render
{
namespace
{
// What a signal's handler may use: plain memory that is there from the start.
constexpr size_t maxFiles = 4;
std::array<char[PATH_MAX], maxFiles> filesToDelete {};

// An endless recursion leaves no stack to run a handler on.
constexpr size_t handlerStackBytes = 65536;
alignas (16) std::array<char, handlerStackBytes> handlerStack {};

struct CrashSignal
{
    int number;
    const char* message;
};

constexpr CrashSignal crashSignals[] {
    { SIGSEGV, "varlo-render: the plug-in crashed (segmentation fault)\n" },
    { SIGBUS, "varlo-render: the plug-in crashed (bus error)\n" },
    { SIGILL, "varlo-render: the plug-in crashed (illegal instruction)\n" },
    { SIGFPE, "varlo-render: the plug-in crashed (arithmetic error)\n" },
    { SIGABRT, "varlo-render: the plug-in crashed (aborted)\n" },
};

void endProgram (int signal)
{
    for (const auto& file : filesToDelete)
        if (file[0] != 0)
            unlink (file);

    for (const auto& crash : crashSignals)
        if (crash.number == signal && write (STDERR_FILENO, crash.message, std::strlen (crash.message)) < 0)
            break;

    _exit (RenderError::failedExitCode);
}
} // namespace

void installCrashHandlers()
{
    stack_t stack {};
    stack.ss_sp = handlerStack.data();
    stack.ss_size = handlerStack.size();
    sigaltstack (&stack, nullptr);

    for (const auto& crash : crashSignals)
    {
        struct sigaction action
        {
        };

        sigaction (crash.number, nullptr, &action);

        // A sanitizer's own handler has more to say.
        if (action.sa_handler != SIG_DFL || (action.sa_flags & SA_SIGINFO) != 0)
            continue;

        action.sa_handler = endProgram;
        action.sa_flags = SA_ONSTACK;
        sigaction (crash.number, &action, nullptr);
    }

    // The library's own way would print lines of its own.
    std::set_terminate ([] { std::abort(); });
}

void deleteOnCrash (const juce::File& file)
{
    const auto path = file.getFullPathName().toStdString();

    for (auto& slot : filesToDelete)
    {
        if (slot[0] != 0 || path.size() >= sizeof (slot))
            continue;

        // The first byte comes last, so that a handler never finds half a path.
        std::memcpy (slot + 1, path.c_str() + 1, path.size());
        std::atomic_signal_fence (std::memory_order_release);
        slot[0] = path[0];
        return;
    }
}

void keepOnCrash (const juce::File& file)
{
    for (auto& slot : filesToDelete)
        if (file.getFullPathName() == juce::CharPointer_UTF8 (slot))
            slot[0] = 0;
}
} // namespace cv::render
