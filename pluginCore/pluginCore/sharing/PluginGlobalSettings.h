#pragma once

#include "pluginCore/product/ProductInfo.h"

#include <juce_data_structures/juce_data_structures.h>

namespace cv::pluginCore
{
/** The names under which PluginGlobalSettings keeps its values. */
namespace settingsKeys
{
inline const juce::Identifier settings { "settings" };
inline const juce::Identifier lastWidth { "lastWidth" };
inline const juce::Identifier lastHeight { "lastHeight" };
inline const juce::Identifier checkForUpdates { "checkForUpdates" };
inline const juce::Identifier lastVersionCheck { "lastVersionCheck" };
inline const juce::Identifier lastChangeLogTime { "lastChangeLogTime" };
} // namespace settingsKeys

/** A handle on the values that belong to the user's machine, not to a project or a preset. All instances
    in the process share them, at once and without touching a file.

    The settings file is read when the first handle comes and, if the values are others then or there is no
    file, written when the last one goes; in between a change is in memory only. Between processes the last to
    write wins, whole file for whole file. A file that can't be read, or that JUCE's reader is not to be given
    (see parseXmlText()), gives no values and stays until other values replace it; what can't be written is
    lost; all of it silently.

    Threads: handles come and go on any thread; the values are the message thread's.
*/
class PluginGlobalSettings
{
public:
    /** What the handles share. */
    struct InnerData
    {
        explicit InnerData (const ProductInfo&);
        ~InnerData();

        /** Without a place on disk where the file there is not to be read. */
        juce::PropertiesFile file;

        /** The values, as text: getProperty (key, default) reads, setProperty (key, value, nullptr)
            writes.
        */
        juce::ValueTree settingsValues { settingsKeys::settings };

    private:
        InnerData (const juce::PropertiesFile::Options&);

        const juce::PropertiesFile::Options options;
        juce::ValueTree valuesOnDisk;

        JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (InnerData)
    };

    /** A binary holds one product, so the first handle's product decides for the process. */
    explicit PluginGlobalSettings (const ProductInfo& product) : innerData (getInnerData (product)) {}

    static std::shared_ptr<InnerData> getInnerData (const ProductInfo&);

    juce::ValueTree& getValues() const noexcept { return innerData->settingsValues; }

private:
    std::shared_ptr<InnerData> innerData;
};
} // namespace cv::pluginCore
