#pragma once

#include <juce_core/juce_core.h>

#include <stdexcept>

namespace cv::render
{
/** What ends the program early: one line for the user, and the exit code that goes with it. Nothing
    but main() catches it.
*/
class RenderError : public std::runtime_error
{
public:
    static constexpr int failedExitCode = 1;
    static constexpr int usageExitCode = 2;
    static constexpr int interruptedExitCode = 130;

    explicit RenderError (const juce::String& message, int code = failedExitCode)
        : std::runtime_error (message.toStdString())
        , exitCode (code)
    {
    }

    int getExitCode() const noexcept { return exitCode; }

private:
    int exitCode;
};

/** A command line that makes no sense, whatever the files and the plug-in hold. */
class UsageError final : public RenderError
{
public:
    explicit UsageError (const juce::String& message) : RenderError (message, usageExitCode) {}
};
} // namespace cv::render
