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
} // namespace cv::pluginCore
