#include "processor/PluginProcessor.h"

namespace cv::pluginCore
{
namespace
{
constexpr int maxUndoUnits = 30000;
constexpr int minUndoTransactions = 30;
} // namespace

PluginProcessor::PluginProcessor (ProductInfo info, juce::AudioProcessorValueTreeState::ParameterLayout layout)
    : AudioProcessor (BusesProperties()
                          .withInput ("Input", juce::AudioChannelSet::stereo(), true)
                          .withOutput ("Output", juce::AudioChannelSet::stereo(), true))
    , valueTreeState (*this, &undoManager, "PARAMS", std::move (layout))
    , productInfo (std::move (info))
    , undoManager (maxUndoUnits, minUndoTransactions)
{
}

const juce::String PluginProcessor::getName() const
{
    return productInfo.name;
}

void PluginProcessor::prepareToPlay (double sampleRate, int samplesPerBlock)
{
    prepare (sampleRate, samplesPerBlock);

    const juce::dsp::ProcessSpec spec { sampleRate, (juce::uint32) samplesPerBlock,
                                        (juce::uint32) getTotalNumOutputChannels() };
    const auto capacity = getMaximumLatencySamples (spec);

    if (bypassDelay == nullptr || capacity > bypassDelayCapacity)
    {
        bypassDelayCapacity = capacity;
        bypassDelay = std::make_unique<BypassDelay> (capacity);
    }

    bypassDelay->prepare (spec);
}

void PluginProcessor::processBlock (juce::AudioBuffer<float>& buffer, juce::MidiBuffer& midi)
{
    const juce::ScopedNoDenormals noDenormals;
    process (buffer, midi);
}

void PluginProcessor::processBlockBypassed (juce::AudioBuffer<float>& buffer, juce::MidiBuffer&)
{
    if (bypassDelay == nullptr)
        return;

    const auto latency = (float) getLatencySamples();

    if (! juce::approximatelyEqual (latency, bypassDelay->getDelay()))
        bypassDelay->setDelay (juce::jlimit (0.0f, (float) bypassDelay->getMaximumDelayInSamples(), latency));

    juce::dsp::AudioBlock<float> block (buffer);
    bypassDelay->process (juce::dsp::ProcessContextReplacing<float> (block));
}

juce::AudioProcessorEditor* PluginProcessor::createEditor()
{
    return new juce::GenericAudioProcessorEditor (*this);
}

const juce::String PluginProcessor::getProgramName (int index)
{
    if (wrapperType == wrapperType_VST3 && index == 0)
        return "Default";

    return {};
}

juce::String PluginProcessor::getVersionString() const
{
    auto text = productInfo.version;

    if (isBetaBuild())
    {
        text << " beta";

        if (getBetaNumber() > 0)
            text << " " << getBetaNumber();
    }

    return text;
}

juce::String PluginProcessor::getVersionDisplayText() const
{
    juce::String text;
    text << getName() << " - " << getWrapperTypeDescription (wrapperType) << (isBetaBuild() ? " Beta" : "") << " \n\n"
         << juce::translate ("version") << " " << getVersionString() << "  (" << __DATE__ << ")";
    return text;
}
} // namespace cv::pluginCore
