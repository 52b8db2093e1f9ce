#include "support/ProcessorHarness.h"

namespace cv::test
{
ProcessorHarness::ProcessorHarness (int numChannels, const juce::PluginHostType& host) : processor (host)
{
    processor.initialise();
    processor.setPlayHead (&playHead);
    setNumChannels (numChannels);
}

void ProcessorHarness::setNumChannels (int numChannels)
{
    const auto set = numChannels == 1 ? juce::AudioChannelSet::mono() : juce::AudioChannelSet::stereo();

    juce::AudioProcessor::BusesLayout layout;
    layout.inputBuses.add (set);
    layout.outputBuses.add (set);
    processor.setBusesLayout (layout);
}

void ProcessorHarness::prepare (double sampleRate, int samplesPerBlock)
{
    processor.setRateAndBufferSizeDetails (sampleRate, samplesPerBlock);
    processor.prepareToPlay (sampleRate, samplesPerBlock);
}

juce::AudioParameterFloat& ProcessorHarness::parameter (const juce::String& parameterId)
{
    for (auto* candidate : processor.getParameters())
        if (auto* found = dynamic_cast<juce::AudioParameterFloat*> (candidate))
            if (found->getParameterID() == parameterId)
                return *found;

    throw std::invalid_argument ("no parameter " + parameterId.toStdString());
}

void ProcessorHarness::set (const juce::String& parameterId, float value)
{
    auto& target = parameter (parameterId);
    target.setValueNotifyingHost (target.convertTo0to1 (value));
}

juce::AudioBuffer<float> ProcessorHarness::render (const juce::AudioBuffer<float>& input, int blockSize)
{
    return render (input, [blockSize] { return blockSize; });
}

juce::AudioBuffer<float> ProcessorHarness::render (const juce::AudioBuffer<float>& input,
                                                   const std::function<int()>& nextBlockSize)
{
    juce::AudioBuffer<float> output;
    output.makeCopyOf (input);
    juce::MidiBuffer midi;

    for (int start = 0; start < output.getNumSamples();)
    {
        const auto length = juce::jmin (nextBlockSize(), output.getNumSamples() - start);
        juce::AudioBuffer<float> block (output.getArrayOfWritePointers(), output.getNumChannels(), start, length);
        processor.processBlock (block, midi);
        start += length;
    }

    return output;
}
} // namespace cv::test
