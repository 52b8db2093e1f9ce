#pragma once

#include <juce_graphics/juce_graphics.h>

namespace cv::pluginCore
{
/** A font, 14 logical pixels high, of a font file that the plug-in carries in itself. Message thread. */
juce::Font makeEmbeddedFont (const char* fontFile, int sizeBytes);
} // namespace cv::pluginCore
