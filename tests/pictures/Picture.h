#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::test
{
/** Writes what a component shows, children included, as a PNG file in place of an older one. False if that can't be
    written. Message thread.
*/
bool writePicture (juce::Component&, const juce::File&);
} // namespace cv::test
