#include "pluginCore/presets/PresetFolders.h"

namespace cv::pluginCore
{
namespace
{
juce::File getOrCreateFolder (const juce::File& parent, const juce::String& name)
{
    const auto folder = parent.getChildFile (name);

    if (! folder.isDirectory())
        folder.createDirectory();

    return folder;
}
} // namespace

DataFolders DataFolders::ofThisSystem()
{
#if JUCE_MAC
    return { .machine = juce::File ("/Library/Application Support"),
             .user = juce::File ("~/Library/Application Support") };
#elif JUCE_WINDOWS
    return { .machine = juce::File::getSpecialLocation (juce::File::commonApplicationDataDirectory),
             .user = juce::File::getSpecialLocation (juce::File::userApplicationDataDirectory) };
#else
    return { .machine = juce::File ("/usr/share"), .user = juce::File ("~/.local/share") };
#endif
}

PresetLocations createPresetFolders (const DataFolders& folders,
                                     const juce::String& company,
                                     const juce::String& product,
                                     const juce::String& presetExtension)
{
    const auto machineFolder = getOrCreateFolder (getOrCreateFolder (folders.machine, company), product);
    const auto factoryFolder = getOrCreateFolder (machineFolder, "presets");

    const auto userFolder = getOrCreateFolder (getOrCreateFolder (folders.user, company), product);
    const auto userPresetFolder = getOrCreateFolder (userFolder, "presets");

    return { .factoryFolder = factoryFolder,
             .userFolder = userPresetFolder,
             .designerFolder = getOrCreateFolder (machineFolder, "DesignersPresets"),
             .initPresetFile = factoryFolder.getChildFile ("Init" + presetExtension),
             .presetExtension = presetExtension };
}
} // namespace cv::pluginCore
