#pragma once

#include <juce_core/juce_core.h>

namespace cv::pluginCore
{
/** Whether these bytes are UTF-8 in every respect: complete sequences, the shortest for each character, no
    surrogates. JUCE's own check passes over the bytes that follow the first of a sequence, and its strings
    go astray on what is left. Any thread.
*/
bool isWellFormedUtf8 (const char* bytes, size_t numBytes) noexcept;
} // namespace cv::pluginCore
