#pragma once

#include "pluginCore/presets/PresetLocations.h"
#include "support/ScratchFolder.h"

namespace cv::test
{
/** Preset folders of a product's, all of them in a new folder that goes with this object. */
class PresetSandbox
{
public:
    /** `subfolder` lies above all folders, for tests that care about names. */
    explicit PresetSandbox (const juce::String& subfolder = "data")
        : machineFolder (scratch.getFile (subfolder).getChildFile ("machine"))
        , userFolder (scratch.getFile (subfolder).getChildFile ("user"))
        , locations (
              pluginCore::createPresetFolders ({ machineFolder, userFolder }, "Test Maker", "Test Product", ".test"))
    {
    }

    juce::File getFile (const juce::String& name) const { return scratch.getFile (name); }

    const pluginCore::PresetLocations& getLocations() const noexcept { return locations; }

private:
    const ScratchFolder scratch;
    const juce::File machineFolder;
    const juce::File userFolder;
    const pluginCore::PresetLocations locations;
};
} // namespace cv::test
