#include "PluginState.h"

#include "NumberText.h"
#include "RenderError.h"
#include "TemporaryOutput.h"

#include "pluginCore/files/FilePath.h"
#include "pluginCore/presets/PresetFile.h"
#include "pluginCore/state/StateChunk.h"

namespace cv::render
{
namespace
{
/** JUCE keeps a VST3's state as XML, each part in a child of its own. */
const juce::String componentElement = "IComponent";

constexpr juce::uint32 bytesAroundText = 9;

const juce::Identifier valuesElement ("PARAMS");
const juce::Identifier idAttribute ("id");
const juce::Identifier valueAttribute ("value");

const juce::String notAState = "not a saved state: ";
const juce::String notAPreset = "not a preset: ";

std::unique_ptr<juce::XmlElement> getHostState (const PluginHost& host)
{
    juce::MemoryBlock data;
    host.getInstance().getStateInformation (data);
    auto xml = juce::AudioProcessor::getXmlFromBinary (data.getData(), (int) data.getSize());

    if (xml == nullptr || xml->getChildByName (componentElement) == nullptr)
        throw RenderError (host.getInstance().getName() + " gives no state");

    return xml;
}

std::unique_ptr<juce::XmlElement> parse (const juce::MemoryBlock& chunk)
{
    return pluginCore::parseStateChunk (chunk.getData(), (int) chunk.getSize());
}

/** Twice what the plug-in takes of a state's text: a host's file may hold something of its own behind it. */
constexpr juce::int64 maxStateFileBytes = 16 * 1024 * 1024;

/** A pipe or device would keep the program waiting, or never end. */
void checkReadable (const juce::File& file, juce::int64 maxBytes, const juce::String& refusal)
{
    const auto name = file.getFullPathName();

    if (! file.existsAsFile())
        throw RenderError ((file.isDirectory() ? "is a folder, not a file: " : "no such file: ") + name);

    if (! pluginCore::isRegularFile (file))
        throw RenderError (refusal + name + " (a pipe or a device)");

    if (file.getSize() > maxBytes)
        throw RenderError (refusal + name + " (more than " + juce::String (maxBytes / (1024 * 1024)) + " MiB)");
}

/** States name the plug-in that they belong to in their outermost element. */
void checkBelongsTo (const juce::XmlElement& xml,
                     const juce::File& file,
                     const PluginHost& host,
                     const juce::MemoryBlock& presentState)
{
    const auto own = parse (presentState);

    if (own != nullptr && own->getTagName() != xml.getTagName())
        throw RenderError (file.getFullPathName() + " is not for " + host.getInstance().getName() + " but for "
                           + xml.getTagName());
}
} // namespace

PluginState PluginState::of (const PluginHost& host)
{
    juce::MemoryBlock chunk;
    chunk.fromBase64Encoding (getHostState (host)->getChildByName (componentElement)->getAllSubText());

    // JUCE's client writes its own things behind the chunk, the state of its bypass switch for one.
    if (parse (chunk) != nullptr)
        chunk.setSize (juce::jmin (chunk.getSize(),
                                   (size_t) juce::ByteOrder::littleEndianInt (chunk.begin() + 4) + bytesAroundText));

    return PluginState (std::move (chunk));
}

PluginState PluginState::fromFile (const juce::File& file, const PluginHost& host)
{
    checkReadable (file, maxStateFileBytes, notAState);
    juce::MemoryBlock chunk;

    if (! file.loadFileAsData (chunk))
        throw RenderError ("can't be read: " + file.getFullPathName());

    const auto xml = parse (chunk);

    if (xml == nullptr)
        throw RenderError (notAState + file.getFullPathName());

    checkBelongsTo (*xml, file, host, of (host).chunk);
    return PluginState (std::move (chunk));
}

PluginState PluginState::fromPreset (const juce::File& file, const PluginHost& host)
{
    checkReadable (file, pluginCore::maxPresetBytes, notAPreset);
    const auto xml = pluginCore::readPresetFile (file);

    if (xml == nullptr)
        throw RenderError (notAPreset + file.getFullPathName());

    checkBelongsTo (*xml, file, host, of (host).chunk);
    juce::MemoryBlock chunk;
    juce::AudioProcessor::copyXmlToBinary (*xml, chunk);
    return PluginState (std::move (chunk));
}

juce::StringArray PluginState::findDoubtsInPreset (const juce::File& file, const PluginHost& host)
{
    const auto xml = pluginCore::readPresetFile (file);
    const auto own = parse (of (host).chunk);
    const auto* const ownValues = own != nullptr ? own->getChildByName (valuesElement) : nullptr;

    if (xml == nullptr || ownValues == nullptr)
        return {};

    juce::StringArray ids, doubts;

    for (const auto* value : ownValues->getChildIterator())
        ids.add (value->getStringAttribute (idAttribute));

    if (const auto* const values = xml->getChildByName (valuesElement))
    {
        for (const auto* value : values->getChildIterator())
        {
            const auto id = value->getStringAttribute (idAttribute);
            const auto text = value->getStringAttribute (valueAttribute);

            if (! ids.contains (id))
                doubts.add ("no parameter has the id " + id.quoted() + "; there are " + ids.joinIntoString (", "));
            else if (! parseNumber (text))
                doubts.add ("the value of " + id + " is no number: " + text.quoted());
        }
    }

    for (auto& doubt : doubts)
        doubt = file.getFullPathName() + ": " + doubt.replaceCharacters ("\r\n", "  ");

    return doubts;
}

void PluginState::applyTo (const PluginHost& host) const
{
    const auto xml = getHostState (host);
    auto* component = xml->getChildByName (componentElement);
    component->deleteAllTextElements();
    component->addTextElement (chunk.toBase64Encoding());

    juce::MemoryBlock data;
    juce::AudioProcessor::copyXmlToBinary (*xml, data);
    host.getInstance().setStateInformation (data.getData(), (int) data.getSize());
}

void PluginState::write (const juce::File& file) const
{
    TemporaryOutput temporary (file);
    {
        juce::FileOutputStream stream (temporary.getFile());
        stream << chunk;
    }

    const auto isComplete = temporary.getFile().getSize() == (juce::int64) chunk.getSize();

    if (! isComplete)
        throw RenderError ("can't write " + file.getFullPathName());

    temporary.commit();
}
} // namespace cv::render
