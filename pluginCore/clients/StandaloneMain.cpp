// The program's entry on Linux, around JUCE's application. JUCE's own would wait in silence where there is no display,
// and would end without saving when it is asked to by a signal.

#include <juce_gui_basics/juce_gui_basics.h>

#include <csignal>
#include <iostream>
#include <unistd.h>

// JUCE's client defines it.
juce::JUCEApplicationBase* juce_CreateApplication();

namespace
{
/** What a signal leaves for the message thread, both ends of a pipe. */
int signalPipe[2] { -1, -1 };

void handleSignal (int)
{
    const char byte = 0;
    [[maybe_unused]] const auto count = write (signalPipe[1], &byte, 1);
}

void quit (int pipe)
{
    char byte;

    if (read (pipe, &byte, 1) == 1)
        if (auto* const application = juce::JUCEApplicationBase::getInstance())
            application->systemRequestedQuit();
}

/** A signal that is ignored, as nohup has it with SIGHUP, stays so. */
void endBySignals()
{
    if (pipe (signalPipe) != 0)
        return;

    juce::LinuxEventLoop::registerFdCallback (signalPipe[0], quit);

    for (const auto signal : { SIGINT, SIGTERM, SIGHUP })
    {
        struct sigaction action
        {
        };

        sigaction (signal, nullptr, &action);

        if (action.sa_handler == SIG_IGN)
            continue;

        action.sa_handler = handleSignal;
        action.sa_flags = SA_RESTART;
        sigaction (signal, &action, nullptr);
    }
}

/** Called by JUCE once there is a message thread, after it has set up signals in its own way. */
juce::JUCEApplicationBase* createApplication()
{
    endBySignals();
    return juce_CreateApplication();
}

bool isDisplayThere()
{
    juce::DynamicLibrary library;

    if (! library.open ("libX11.so.6"))
        return false;

    const auto open = reinterpret_cast<void* (*) (const char*)> (library.getFunction ("XOpenDisplay"));
    const auto close = reinterpret_cast<int (*) (void*)> (library.getFunction ("XCloseDisplay"));

    if (open == nullptr || close == nullptr)
        return false;

    auto* const display = open (nullptr);

    if (display == nullptr)
        return false;

    close (display);
    return true;
}

juce::String sayWhyThereIsNone()
{
    const auto name = juce::SystemStats::getEnvironmentVariable ("DISPLAY", {});
    return name.isEmpty() ? juce::String ("DISPLAY is not set") : "there is no X server at " + name.quoted();
}
} // namespace

int main (int argc, char** argv)
{
    if (! isDisplayThere())
    {
        std::cerr << juce::String (JucePlugin_Name).toLowerCase() << ": no display: " << sayWhyThereIsNone()
                  << std::endl;
        return 1;
    }

    juce::JUCEApplicationBase::createInstance = &createApplication;
    return juce::JUCEApplicationBase::main (argc, const_cast<const char**> (argv));
}
