#pragma once

#include "support/ScratchFolder.h"

#include <optional>

namespace cv::test
{
/** A child process in an environment that only differs from this one's in HOME. It is killed with this object. */
class Program
{
public:
    /** Starts the program. Its output and its errors go together. */
    Program (const juce::File& executable, const juce::File& home);
    ~Program();

    bool isRunning() { return ! waitForEnd (0); }

    /** What the process returned, or 128 plus the signal that ended it; none while it runs on after so many
        milliseconds.
    */
    std::optional<int> waitForEnd (int timeoutMilliseconds);

    void sendSignal (int signal) const;

    /** All that it has printed so far. */
    juce::String getText() const;

private:
    const ScratchFolder scratch;
    int process = -1;
    std::optional<int> exitCode;

    JUCE_DECLARE_NON_COPYABLE (Program)
};
} // namespace cv::test
