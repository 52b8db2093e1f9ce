#include "pluginCore/presets/PresetLocations.h"

#include "pluginCore/files/FilePath.h"

namespace cv::pluginCore
{
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
} // namespace cv::pluginCore
