#pragma once

#include <juce_core/juce_core.h>

#include <array>
#include <optional>

namespace cv::pluginCore
{
/** Where presets lie: the maker's own, the user's, and those that sound designers made for the product. */
enum class PresetBank
{
    factory,
    user,
    designer
};

/** All banks, in the order in which they are searched and shown. */
inline constexpr std::array presetBanks { PresetBank::factory, PresetBank::user, PresetBank::designer };

/** The bank's name in projects and menus: "FACTORY", "USER" or "DESIGNER". */
juce::String getPresetBankName (PresetBank);

/** The bank of exactly this name, if there is one. */
std::optional<PresetBank> findPresetBank (const juce::String& name);

/** Where a product's presets lie, and how their files are called. */
struct PresetLocations
{
    juce::File factoryFolder;
    juce::File userFolder;
    juce::File designerFolder;

    /** What the product calls its neutral sound. */
    juce::File initPresetFile;

    /** With the point. */
    juce::String presetExtension;

    const juce::File& getFolder (PresetBank) const;

    /** The first bank, in their order, that holds the file at any depth. */
    std::optional<PresetBank> findBankOf (const juce::File&) const;
};

/** The folders beneath which a system keeps what its applications store. */
struct DataFolders
{
    /** For all users; an ordinary user need not be able to write there. */
    juce::File machine;

    /** For the user who is logged in. */
    juce::File user;

    /** What this system's custom asks for:

            macOS     /Library/Application Support    ~/Library/Application Support
            Linux     /usr/share                      ~/.local/share
            Windows   JUCE's common and user application data directories
    */
    static DataFolders ofThisSystem();
};

/** Works out a product's preset folders, each beneath <data folder>/<company>/<product>, and creates
    those that are missing. A folder that can't be made is left out silently: its bank is empty then.
*/
PresetLocations createPresetFolders (const DataFolders&,
                                     const juce::String& company,
                                     const juce::String& product,
                                     const juce::String& presetExtension);
} // namespace cv::pluginCore
