#include "Renderer.h"

#include "Interruption.h"

namespace cv::render
{
Renderer::Renderer (
    PluginHost& hostToUse, AudioInput& inputToUse, std::vector<Automation> lanes, juce::int64 tail, int maxBlockLength)
    : host (hostToUse)
    , input (inputToUse)
    , automation (std::move (lanes))
    , blockLength (maxBlockLength)
    , outputLength (input.getLength() + tail)
    , playHead (input.getSampleRate())
{
    for (auto& lane : automation)
        lane.applyAt (0.0);

    host.getInstance().setPlayHead (&playHead);
    host.prepare (input.getNumChannels(), input.getSampleRate(), blockLength);
}

void Renderer::run (AudioOutput* output, ProgressLine& progress, const std::function<void (double)>& afterBlock)
{
    auto& plugin = host.getInstance();
    const auto latency = (juce::int64) plugin.getLatencySamples();
    const auto end = outputLength + latency;
    juce::AudioBuffer<float> buffer (
        juce::jmax (plugin.getTotalNumInputChannels(), plugin.getTotalNumOutputChannels(), input.getNumChannels()),
        blockLength);

    for (juce::int64 position = 0; position < end; position += blockLength)
    {
        throwIfInterrupted();

        const auto count = (int) juce::jmin ((juce::int64) blockLength, end - position);
        juce::AudioBuffer<float> block (buffer.getArrayOfWritePointers(), buffer.getNumChannels(), count);
        processBlock (block, position);

        const auto skipped = (int) juce::jlimit ((juce::int64) 0, (juce::int64) count, latency - position);

        if (output != nullptr && skipped < count)
            output->write (block, skipped, count - skipped);

        afterBlock ((double) count / input.getSampleRate());
        progress.update ((double) (position + count) / (double) end);
    }

    plugin.releaseResources();
    plugin.setPlayHead (nullptr);
}

void Renderer::processBlock (juce::AudioBuffer<float>& block, juce::int64 position)
{
    block.clear();
    input.read (block);

    for (auto& lane : automation)
        lane.applyAt ((double) position / input.getSampleRate());

    midi.clear();
    host.getInstance().processBlock (block, midi);
    playHead.advance (block.getNumSamples());
}
} // namespace cv::render
