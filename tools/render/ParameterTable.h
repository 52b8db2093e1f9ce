#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

namespace cv::render
{
/** The plug-in's parameters in host order as a table for people: name, range and default as the
    plug-in shows them, in columns, with a line feed behind each row. Message thread.
*/
juce::String makeParameterTable (const juce::AudioProcessor&);
} // namespace cv::render
