#pragma once

#include "pluginCore/presets/PresetsManager.h"

namespace cv::test
{
/** Notes what a preset store tells its listeners, in order: "loaded <file name>", "dirty", "clean". */
class PresetListenerLog final : public pluginCore::PresetsManager::Listener
{
public:
    explicit PresetListenerLog (pluginCore::PresetsManager& store) : presets (store) { presets.addListener (this); }

    ~PresetListenerLog() override { presets.removeListener (this); }

    /** All since the last call, with commas between. */
    juce::String takeEvents()
    {
        const auto text = events.joinIntoString (", ");
        events.clear();
        return text;
    }

private:
    void presetLoaded (pluginCore::PresetsManager&, const juce::File& file) override
    {
        events.add ("loaded " + file.getFileName());
    }

    void dirtyStateChanged (pluginCore::PresetsManager&, bool newDirty) override
    {
        events.add (newDirty ? "dirty" : "clean");
    }

    pluginCore::PresetsManager& presets;
    juce::StringArray events;

    JUCE_DECLARE_NON_COPYABLE (PresetListenerLog)
};
} // namespace cv::test
