#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

namespace cv::pluginCore
{
/** Replaces the values of all parameters by those of an element that a parameter tree was written to, and
    ends the undo history.

    A parameter that the element lacks, or whose value doesn't begin with a number there, takes its default; one
    beyond its range takes the nearest end. The tree holds the same afterwards, each parameter once, so that
    no bad value is saved again. Parameters that the tree doesn't know are kept in it and ignored. Takes the
    tree's lock; any thread but the audio thread.
*/
void applyParameterState (juce::AudioProcessorValueTreeState&, const juce::XmlElement&);

/** Holds some parameters' values, to put them back after others have been applied. */
class ParameterLocks
{
public:
    /** Reads the present values of the parameters that have these IDs; other IDs are skipped. */
    ParameterLocks (const juce::AudioProcessorValueTreeState&, const juce::StringArray& parameterIds);

    /** Sets each parameter back, as one gesture that the host is told of. Any thread but the audio thread. */
    void putBack() const;

private:
    struct Lock
    {
        juce::RangedAudioParameter* parameter;
        float value; // in the parameter's own unit
    };

    std::vector<Lock> locks;
};
} // namespace cv::pluginCore
