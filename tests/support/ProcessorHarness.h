#pragma once

#include "support/FakePlayHead.h"
#include "varlo/AudioPluginAudioProcessor.h"

#include <functional>

namespace cv::test
{
/** A processor treated as a host would treat it: given a layout, a rate and a play head, prepared, and
    fed with blocks.
*/
class ProcessorHarness
{
public:
    /** `numChannels` is 1 or 2. The play head knows no position until a test sets one. */
    explicit ProcessorHarness (int numChannels = 2, const juce::PluginHostType& host = {});

    /** Changes the layout to 1 or 2 channels. To be followed by prepare(). */
    void setNumChannels (int numChannels);

    /** Prepares for a rate in hertz, as often as it is called. */
    void prepare (double sampleRate = 44100.0, int samplesPerBlock = 512);

    /** Sets a parameter, by its ID, to a value in display units. */
    void set (const juce::String& parameterId, float value);

    juce::AudioParameterFloat& parameter (const juce::String& parameterId);

    /** Feeds the input in blocks of `blockSize` samples, the last one shorter, and returns the output. */
    juce::AudioBuffer<float> render (const juce::AudioBuffer<float>& input, int blockSize = 512);

    /** The same with block lengths, 0 included, from a function that is asked for each block. */
    juce::AudioBuffer<float> render (const juce::AudioBuffer<float>& input, const std::function<int()>& nextBlockSize);

    varlo::AudioPluginAudioProcessor processor;
    FakePlayHead playHead;
};
} // namespace cv::test
