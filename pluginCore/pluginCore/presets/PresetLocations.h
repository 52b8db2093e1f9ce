#pragma once

#include "pluginCore/presets/PresetBank.h"

namespace cv::pluginCore
{
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
} // namespace cv::pluginCore
