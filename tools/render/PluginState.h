#pragma once

#include "PluginHost.h"

namespace cv::render
{
/** A plug-in's state as its component writes it, without what hosts and JUCE's client put around it. */
class PluginState
{
public:
    /** Asks the plug-in. Message thread. */
    static PluginState of (const PluginHost&);

    /** Reads a file that write() has written. Throws RenderError for one that this plug-in wouldn't take. */
    static PluginState fromFile (const juce::File&, const PluginHost&);

    /** Turns a preset file into the state that a project would hold. Throws RenderError for one that this
        plug-in wouldn't take.
    */
    static PluginState fromPreset (const juce::File&, const PluginHost&);

    /** What in a preset file the plug-in passes over: values of parameters that it hasn't, or that are no numbers.
        A sentence for each, none for what is no preset. To be asked before a state goes to the plug-in, which keeps
        what it doesn't know.
    */
    static juce::StringArray findDoubtsInPreset (const juce::File&, const PluginHost&);

    /** Hands the state to the plug-in, as a host does that opens a project. Message thread. */
    void applyTo (const PluginHost&) const;

    /** Replaces the file as a whole; throws RenderError if that fails. */
    void write (const juce::File&) const;

private:
    explicit PluginState (juce::MemoryBlock bytes) : chunk (std::move (bytes)) {}

    juce::MemoryBlock chunk;
};
} // namespace cv::render
