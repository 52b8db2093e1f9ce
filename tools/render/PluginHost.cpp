#include "PluginHost.h"

#include "RenderError.h"

namespace cv::render
{
namespace
{
const juce::String defaultBundleName = "Varlo.vst3";

juce::File findDefaultBundle()
{
    // Unlike the path that the program was called by, this one also holds for a call through PATH or
    // through a symbolic link.
    const auto program = juce::File::getSpecialLocation (juce::File::hostApplicationPath);
    const auto folder = program.getParentDirectory();
    juce::StringArray tried;

    // Packages put the program into bin and the bundle into lib/vst3 of the same folder.
    for (const auto& place : { folder, folder.getSiblingFile ("lib/vst3"),
                               juce::File::getSpecialLocation (juce::File::userHomeDirectory).getChildFile (".vst3"),
                               juce::File ("/usr/local/lib/vst3"), juce::File ("/usr/lib/vst3") })
    {
        const auto bundle = place.getChildFile (defaultBundleName);

        if (bundle.exists())
            return bundle;

        tried.addIfNotAlreadyThere (bundle.getFullPathName());
    }

    throw RenderError ("no plug-in: none of " + tried.joinIntoString (", ") + " exists; name one with --plugin");
}

/** JUCE takes for granted that a bundle's binary loads and is a plug-in; look before. */
bool holdsPlugin (const juce::File& bundle)
{
    auto binaries = bundle.findChildFiles (juce::File::findFiles, true, "*.so");

    if (bundle.existsAsFile())
        binaries.add (bundle);

    return std::any_of (binaries.begin(), binaries.end(),
                        [] (const auto& binary)
                        {
                            juce::DynamicLibrary library;
                            return library.open (binary.getFullPathName())
                                   && library.getFunction ("GetPluginFactory") != nullptr;
                        });
}

juce::PluginDescription describe (juce::VST3PluginFormat& format, const juce::File& bundle)
{
    const auto path = bundle.getFullPathName();

    if (! bundle.exists())
        throw RenderError ("no such plug-in: " + path);

    if (! bundle.hasFileExtension ("vst3"))
        throw RenderError ("not a VST3 bundle: " + path);

    if (! holdsPlugin (bundle))
        throw RenderError ("can't be loaded as a VST3 plug-in: " + path);

    juce::OwnedArray<juce::PluginDescription> descriptions;
    format.findAllTypesForFile (descriptions, path);

    for (const auto* description : descriptions)
        if (! description->isInstrument)
            return *description;

    throw RenderError (descriptions.isEmpty() ? "can't be loaded as a VST3 plug-in: " + path
                                              : "holds instruments only, no effect: " + path);
}
} // namespace

PluginHost::PluginHost (const std::optional<juce::File>& bundle)
{
    // What the plug-in asks for before prepare() says otherwise.
    constexpr double initialSampleRate = 44100.0;
    constexpr int initialBlockLength = 512;

    const auto file = bundle ? *bundle : findDefaultBundle();
    const auto description = describe (format, file);

    juce::String error;
    instance = format.createInstanceFromDescription (description, initialSampleRate, initialBlockLength, error);

    if (instance == nullptr)
        throw RenderError ("can't be loaded as a VST3 plug-in: " + file.getFullPathName());
}

ParameterText PluginHost::getParameter (const juce::String& name) const
{
    juce::StringArray names;

    for (auto* parameter : instance->getParameters())
    {
        ParameterText text (*parameter);

        if (text.getName().equalsIgnoreCase (name))
            return text;

        names.add (text.getName());
    }

    throw RenderError ("no parameter \"" + name + "\"; there are " + names.joinIntoString (", "));
}

void PluginHost::prepare (int numChannels, double sampleRate, int maxBlockLength)
{
    auto layout = instance->getBusesLayout();

    if (layout.inputBuses.isEmpty() || layout.outputBuses.isEmpty())
        throw RenderError (instance->getName() + " has no audio input or no audio output");

    for (auto* buses : { &layout.inputBuses, &layout.outputBuses })
    {
        for (auto& bus : *buses)
            bus = juce::AudioChannelSet::disabled();

        buses->getReference (0) = juce::AudioChannelSet::canonicalChannelSet (numChannels);
    }

    if (! instance->setBusesLayout (layout))
        throw RenderError (instance->getName() + " does not take " + (numChannels == 1 ? "mono" : "stereo") + " audio");

    instance->setNonRealtime (true);
    instance->setRateAndBufferSizeDetails (sampleRate, maxBlockLength);
    instance->prepareToPlay (sampleRate, maxBlockLength);
}
} // namespace cv::render
