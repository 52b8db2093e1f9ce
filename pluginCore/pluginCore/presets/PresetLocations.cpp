#include "pluginCore/presets/PresetLocations.h"

#include "pluginCore/files/FilePath.h"

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

juce::String getPresetBankName (PresetBank bank)
{
    switch (bank)
    {
        case PresetBank::factory:
            return "FACTORY";
        case PresetBank::user:
            return "USER";
        case PresetBank::designer:
            return "DESIGNER";
    }

    return {};
}

std::optional<PresetBank> findPresetBank (const juce::String& name)
{
    for (const auto bank : presetBanks)
        if (getPresetBankName (bank) == name)
            return bank;

    return {};
}

const juce::File& PresetLocations::getFolder (PresetBank bank) const
{
    switch (bank)
    {
        case PresetBank::user:
            return userFolder;
        case PresetBank::designer:
            return designerFolder;
        case PresetBank::factory:
            break;
    }

    return factoryFolder;
}

std::optional<PresetBank> PresetLocations::findBankOf (const juce::File& file) const
{
    for (const auto bank : presetBanks)
        if (isBelowFolder (file, getFolder (bank)))
            return bank;

    return {};
}

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
