#pragma once

#include "pluginCore/presets/PresetLocations.h"

namespace cv::pluginCore
{
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
