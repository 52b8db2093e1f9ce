#include "pluginCore/presets/PresetBank.h"

namespace cv::pluginCore
{
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
} // namespace cv::pluginCore
