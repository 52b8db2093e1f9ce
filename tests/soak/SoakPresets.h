#pragma once

#include <juce_core/juce_core.h>

namespace cv::soak
{
/** Writes a few presets into the user's bank below this home, some of them in a folder. No two have a value in
    common.
*/
void writePresets (const juce::File& home);
} // namespace cv::soak
