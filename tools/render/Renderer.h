#pragma once

#include "AudioInput.h"
#include "AudioOutput.h"
#include "Automation.h"
#include "PlayHead.h"
#include "PluginHost.h"
#include "ProgressLine.h"

#include <functional>
#include <vector>

namespace cv::render
{
/** Passes a file through a plug-in, block by block, as an offline render in a host does. */
class Renderer
{
public:
    /** The tail is in samples, the block length in samples from 1 on. Host and files outlive this
        object. Prepares the plug-in: its parameters are to be set by now.
    */
    Renderer (PluginHost&, AudioInput&, std::vector<Automation>, juce::int64 tail, int blockLength);

    /** The length of the output in samples: the input's and the tail. */
    juce::int64 getOutputLength() const noexcept { return outputLength; }

    /** Renders all of it, the plug-in's latency cut off its front, to the output if there is one.
        `afterBlock` is told after each block how many seconds of sound that was. Throws RenderError when
        reading or writing fails and when a signal interrupts it. Message thread. Call once.
    */
    void run (AudioOutput*, ProgressLine&, const std::function<void (double seconds)>& afterBlock);

private:
    void processBlock (juce::AudioBuffer<float>&, juce::int64 position);

    PluginHost& host;
    AudioInput& input;
    std::vector<Automation> automation;
    int blockLength;
    juce::int64 outputLength;
    PlayHead playHead;
    juce::MidiBuffer midi;

    JUCE_DECLARE_NON_COPYABLE (Renderer)
};
} // namespace cv::render
