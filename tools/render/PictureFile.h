#pragma once

#include <juce_graphics/juce_graphics.h>

namespace cv::render
{
/** Writes the picture as a PNG file. What was at the target stays until all is written. Throws RenderError when
    that fails.
*/
void writePicture (const juce::Image&, const juce::File& target);
} // namespace cv::render
