#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

#include <vector>

namespace cv::soak
{
/** What hosts do to a plug-in without its editor. Each action takes part of a second and says whether the plug-in
    did what it should. Message thread.
*/
class PluginActions
{
public:
    /** Both outlive this object. */
    PluginActions (juce::AudioPluginInstance&, juce::Random&);

    /** Moves a parameter along a line, and expects its state to tell of it. */
    bool automate();

    /** Keeps the plug-in's state, of which there has to be one. */
    bool saveState();

    /** Gives the plug-in one of the last states back, and expects the values of then. */
    bool loadState();

    /** The parameters' values as the host knows them, from 0 to 1. */
    std::vector<float> getValues() const;

private:
    struct State
    {
        juce::MemoryBlock data;
        std::vector<float> values;
    };

    juce::MemoryBlock getState() const;

    juce::AudioPluginInstance& plugin;
    juce::Random& random;
    std::vector<State> states;

    JUCE_DECLARE_NON_COPYABLE (PluginActions)
};
} // namespace cv::soak
