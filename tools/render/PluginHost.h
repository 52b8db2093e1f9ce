#pragma once

#include "ParameterText.h"

#include <juce_audio_processors/juce_audio_processors.h>

#include <memory>
#include <optional>

namespace cv::render
{
/** One instance of a VST3 plug-in, loaded as a host loads it. Message thread. */
class PluginHost
{
public:
    /** Loads the first effect of a bundle; without one, of the default bundle: Varlo.vst3 beside this
        program, then in ~/.vst3. Throws RenderError when there is none or it does not load.
    */
    explicit PluginHost (const std::optional<juce::File>& bundle);

    juce::AudioPluginInstance& getInstance() const noexcept { return *instance; }

    /** The parameter of this name in whatever case. Throws RenderError, which lists the names that
        there are.
    */
    ParameterText getParameter (const juce::String& name) const;

    /** Sets the plug-in up for rendering with as many channels in as out, 1 or 2, at a rate in Hz and
        with blocks of up to so many samples. Throws RenderError when it refuses the channels. Parameters
        set beforehand hold from the first sample, without a glide from their defaults.
    */
    void prepare (int numChannels, double sampleRate, int maxBlockLength);

private:
    juce::VST3PluginFormat format;
    std::unique_ptr<juce::AudioPluginInstance> instance;
};
} // namespace cv::render
