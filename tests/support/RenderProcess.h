#pragma once

#include "support/ScratchFolder.h"

#include <map>
#include <optional>
#include <vector>

namespace cv::test
{
/** varlo-render as a child process. Any assertion of JUCE's and any report of a sanitizer in it fails
    the running test.
*/
class RenderProcess
{
public:
    struct Options
    {
        /** Another program that takes the same arguments, instead of the built varlo-render. */
        std::optional<std::string> program;

        /** Changes to this process's environment; none for a variable to take out of it. */
        std::map<std::string, std::optional<std::string>> environment;

        /** Comes before the arguments, in bytes that JUCE's strings don't stand. */
        std::optional<std::string> firstArgument;

        /** No file may grow beyond this, as if the disk were full. In bytes. */
        std::optional<size_t> maxFileSize;

        /** Adds --plugin with the built bundle, unless the arguments name one. */
        bool useBuiltBundle = true;

        /** Stderr becomes a terminal instead of a file. */
        bool stderrIsTerminal = false;

        /** Where stdout goes, instead of into Result::output; closed if the path is empty. */
        std::optional<juce::String> stdoutPath;

        /** Signals that the process is started with ignoring, as nohup does with SIGHUP. */
        std::vector<int> ignoredSignals;
    };

    struct Result
    {
        /** What the process returned, or 128 plus the signal that ended it. */
        int exitCode = -1;

        juce::String output;
        juce::String errors;
    };

    /** Starts the program. */
    explicit RenderProcess (juce::StringArray arguments);
    RenderProcess (juce::StringArray arguments, const Options&);
    ~RenderProcess();

    void sendSignal (int signal) const;

    /** Waits for the end. Call once. */
    Result wait();

    /** Starts the program and waits for its end. */
    static Result run (const juce::StringArray& arguments) { return run (arguments, {}); }

    static Result run (const juce::StringArray& arguments, const Options&);

    /** Fails the test, with the program's words, unless it ends well and says nothing on stderr. */
    static Result runWell (const juce::StringArray& arguments) { return runWell (arguments, {}); }

    static Result runWell (const juce::StringArray& arguments, const Options&);

private:
    ScratchFolder scratch;
    int process = -1;
    int terminal = -1;

    JUCE_DECLARE_NON_COPYABLE (RenderProcess)
};
} // namespace cv::test
