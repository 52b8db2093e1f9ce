#include "pluginCore/processor/PluginProcessor.h"

#include "pluginCore/editor/PluginEditor.h"
#include "pluginCore/presets/LastPreset.h"
#include "pluginCore/state/ParameterState.h"
#include "pluginCore/state/StateChunk.h"
#include "pluginCore/state/TreeMerge.h"
#include "pluginCore/state/TreeXml.h"
#include "pluginCore/state/XmlText.h"

namespace cv::pluginCore
{
namespace
{
constexpr int maxUndoUnits = 30000;
constexpr int minUndoTransactions = 30;

const juce::Identifier parametersType { "PARAMS" };

namespace attributes
{
const juce::Identifier company { "company" };
const juce::Identifier version { "version" };
const juce::Identifier editorWidth { "pluginEditorWidth" };
const juce::Identifier editorHeight { "pluginEditorHeight" };
const juce::Identifier lockedParameters { "lockedParams" };
} // namespace attributes

const juce::String lockedParametersSeparator = ";";
} // namespace

PluginProcessor::PluginProcessor (ProductInfo info,
                                  juce::AudioProcessorValueTreeState::ParameterLayout layout,
                                  const PresetLocations& presetLocations,
                                  const TreeHook& dataTreeHook,
                                  const TreeHook& settingsTreeHook)
    : AudioProcessor (BusesProperties()
                          .withInput ("Input", juce::AudioChannelSet::stereo(), true)
                          .withOutput ("Output", juce::AudioChannelSet::stereo(), true))
    , valueTreeState (*this, &undoManager, parametersType, std::move (layout))
    , productInfo (std::move (info))
    , globalSettings (productInfo)
    , undoManager (maxUndoUnits, minUndoTransactions)
    , presetsManager (*this, presetLocations)
{
    localisedStrings.setLanguage (LocalisedStringsManager::systemLanguageCode());
    juce::NullCheckedInvocation::invoke (dataTreeHook, dataTree);
    juce::NullCheckedInvocation::invoke (settingsTreeHook, settingsTree);
}

PluginProcessor::~PluginProcessor()
{
    for (const auto* parameter : getParameters())
        if (const auto* withId = dynamic_cast<const juce::AudioProcessorParameterWithID*> (parameter))
            valueTreeState.removeParameterListener (withId->paramID, this);
}

void PluginProcessor::initialise()
{
    for (const auto* parameter : getParameters())
        if (const auto* withId = dynamic_cast<const juce::AudioProcessorParameterWithID*> (parameter))
            valueTreeState.addParameterListener (withId->paramID, this);
}

const juce::String PluginProcessor::getName() const
{
    return productInfo.name;
}

void PluginProcessor::prepareToPlay (double sampleRate, int samplesPerBlock)
{
    prepare (sampleRate, samplesPerBlock);
    isPrepared = isPrepared || sampleRate > 0.0;

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

    if (resetPending.exchange (false))
        reset();

    if (isPrepared)
        process (buffer, midi);
    else
        buffer.clear();
}

void PluginProcessor::processBlockBypassed (juce::AudioBuffer<float>& buffer, juce::MidiBuffer&)
{
    if (bypassDelay == nullptr)
    {
        buffer.clear();
        return;
    }

    const auto latency = (float) getLatencySamples();

    if (! juce::approximatelyEqual (latency, bypassDelay->getDelay()))
        bypassDelay->setDelay (juce::jlimit (0.0f, (float) bypassDelay->getMaximumDelayInSamples(), latency));

    juce::dsp::AudioBlock<float> block (buffer);
    bypassDelay->process (juce::dsp::ProcessContextReplacing<float> (block));
}

juce::AudioProcessorEditor* PluginProcessor::createEditor()
{
    std::unique_ptr<PluginEditor> editor (createPluginEditor());
    editor->open();
    return editor.release();
}

const juce::String PluginProcessor::getProgramName (int index)
{
    if (wrapperType == wrapperType_VST3 && index == 0)
        return "Default";

    return {};
}

void PluginProcessor::getStateInformation (juce::MemoryBlock& destination)
{
    const auto xml = createStateXml (true);
    xml->setAttribute (attributes::lockedParameters, lockedParameterIds.joinIntoString (lockedParametersSeparator));

    if (auto lastPreset = createLastPresetXml (presetsManager))
        xml->addChildElement (lastPreset.release());

    copyXmlToBinary (*xml, destination);
}

void PluginProcessor::setStateInformation (const void* data, int sizeInBytes)
{
    restoringState = true;

    if (const auto xml = parseStateChunk (data, sizeInBytes))
        restoreProjectXml (*xml);

    restoringState = false;
}

void PluginProcessor::restoreProjectXml (const juce::XmlElement& xml)
{
    const auto lastPreset = readLastPresetXml (xml, presetsManager.getLocations());

    if (lastPreset.file.has_value())
        presetsManager.setCurrentPresetFile (*lastPreset.file);

    restoreStateXml (xml, true);

    // The parameters that just moved have marked the preset as changed.
    if (lastPreset.dirty.has_value())
        presetsManager.setDirty (*lastPreset.dirty);

    replaceLockedParameters (xml.getStringAttribute (attributes::lockedParameters));
}

void PluginProcessor::replaceLockedParameters (const juce::String& ids)
{
    lockedParameterIds = juce::StringArray::fromTokens (ids, lockedParametersSeparator, {});
}

std::unique_ptr<juce::XmlElement> PluginProcessor::createStateXml (bool includeEditorState)
{
    auto xml = std::make_unique<juce::XmlElement> (getStateElementName());
    xml->setAttribute (attributes::version, getVersionString());

    if (const auto parameters = valueTreeState.copyState(); parameters.isValid())
        xml->addChildElement (parameters.createXml().release());

    if (includeEditorState)
    {
        if (editorWidth > 0)
            xml->setAttribute (attributes::editorWidth, editorWidth);

        if (editorHeight > 0)
            xml->setAttribute (attributes::editorHeight, editorHeight);

        xml->addChildElement (settingsTree.createXml().release());
    }

    if (dataTree.getNumProperties() > 0 || dataTree.getNumChildren() > 0)
        xml->addChildElement (dataTree.createXml().release());

    return xml;
}

void PluginProcessor::restoreStateXml (const juce::XmlElement& xml, bool includeEditorState)
{
    if (xml.getTagName() != getStateElementName())
        return;

    if (includeEditorState)
        setEditorSize (xml.getIntAttribute (attributes::editorWidth, -1),
                       xml.getIntAttribute (attributes::editorHeight, -1));

    restoreParameters (xml);

    if (const auto* data = findChildElement (xml, dataTree.getType()))
    {
        const auto restored = treeFromXml (*data);
        dataTreeRestored (restored);
        mergeTree (restored, dataTree);
    }

    if (const auto* settings = findChildElement (xml, settingsTree.getType());
        includeEditorState && settings != nullptr)
    {
        const auto restored = treeFromXml (*settings);
        settingsTreeRestored (restored);
        mergeTree (restored, settingsTree);
    }

    resetPending = true;
}

void PluginProcessor::restoreParameters (const juce::XmlElement& stateXml)
{
    const auto* parameters = findChildElement (stateXml, parametersType);

    if (parameters == nullptr)
        return;

    const ParameterLocks locks (valueTreeState, lockedParameterIds);
    applyParameterState (valueTreeState, *parameters);
    locks.putBack();
}

std::unique_ptr<juce::XmlElement> PluginProcessor::createIdentityXml()
{
    auto xml = std::make_unique<juce::XmlElement> (getStateElementName());
    xml->setAttribute (attributes::company, productInfo.company);
    xml->setAttribute (attributes::version, getVersionString());
    return xml;
}

void PluginProcessor::parameterChanged (const juce::String&, float)
{
    presetsManager.setDirty (true);
}

void PluginProcessor::setEditorSize (int width, int height) noexcept
{
    editorWidth = width;
    editorHeight = height;
}

juce::String PluginProcessor::getStateElementName() const
{
    return getName().removeCharacters (" _-:");
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
