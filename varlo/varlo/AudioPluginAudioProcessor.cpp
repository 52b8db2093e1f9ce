#include "varlo/AudioPluginAudioProcessor.h"

#include "pluginCore/presets/PresetLocations.h"
#include "varlo/editor/AudioPluginAudioProcessorEditor.h"

namespace cv::varlo
{
namespace
{
/** Fills the outputs that no input feeds, so that none of them carries what the host left there. */
void copyFirstChannelToExtraOutputs (juce::AudioBuffer<float>& buffer, int numInputs, int numOutputs)
{
    if (buffer.hasBeenCleared())
        return;

    for (auto channel = numInputs; channel < numOutputs; ++channel)
        buffer.copyFrom (channel, 0, buffer, 0, 0, buffer.getNumSamples());
}

const juce::String presetExtension = ".cvpreset";

pluginCore::ProductInfo makeProductInfo()
{
    return { .name = CV_PRODUCT_NAME,
             .version = CV_PRODUCT_VERSION,
             .company = CV_PRODUCT_COMPANY,
             .companyWebSite = CV_PRODUCT_WEB_SITE };
}

pluginCore::PresetLocations getPresetLocations()
{
    const auto info = makeProductInfo();
    return createPresetFolders (pluginCore::DataFolders::ofThisSystem(), info.company, info.name, presetExtension);
}
} // namespace

AudioPluginAudioProcessor::AudioPluginAudioProcessor (const juce::PluginHostType& host)
    : PluginProcessor (makeProductInfo(), Parameters::createLayout(), getPresetLocations())
    , hostType (host)
    , transportWatch (*this)
    , parameters (valueTreeState)
{
}

bool AudioPluginAudioProcessor::isBusesLayoutSupported (const BusesLayout& layout) const
{
    const auto output = layout.getMainOutputChannelSet();

    if (output != juce::AudioChannelSet::mono() && output != juce::AudioChannelSet::stereo())
        return false;

    return layout.getMainInputChannelSet() == output;
}

juce::String AudioPluginAudioProcessor::getReleaseNotesUrl() const
{
    return CV_PRODUCT_WEB_SITE "/releaseNotes/varlo";
}

juce::String AudioPluginAudioProcessor::getProductUrl() const
{
    return CV_PRODUCT_WEB_SITE "/product/varlo";
}

juce::String AudioPluginAudioProcessor::getVersionDisplayText() const
{
    juce::String text;
    text << "v" << getVersionString() << " - " << getWrapperTypeDescription (wrapperType);

#if JUCE_INTEL && JUCE_64BIT
    text << " (x64)";
#endif

    return text;
}

pluginCore::PluginEditor* AudioPluginAudioProcessor::createPluginEditor()
{
    return new AudioPluginAudioProcessorEditor (*this);
}

void AudioPluginAudioProcessor::prepare (double sampleRate, int samplesPerBlock)
{
    if (! (sampleRate > 0.0))
        return;

    transportWatch.prepare (samplesPerBlock);
    fftProcessor.prepareToPlay (sampleRate);
    engine.prepare (sampleRate, parameters.getValues());
}

void AudioPluginAudioProcessor::process (juce::AudioBuffer<float>& buffer, juce::MidiBuffer&)
{
    const auto numInputs = getTotalNumInputChannels();
    const auto numOutputs = getTotalNumOutputChannels();

    if (numInputs <= 0 || numOutputs <= 0 || ! (getSampleRate() > 0.0))
    {
        buffer.clear();
        return;
    }

    copyFirstChannelToExtraOutputs (buffer, numInputs, numOutputs);

    if (transportWatch.hasJumped (buffer.getNumSamples(), hostType))
        engine.clear();

    engine.setParameters (parameters.getValues());
    engine.process (buffer);

    fftProcessor.pushAudio (buffer);
}
} // namespace cv::varlo
