#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

namespace cv::render
{
/** The plug-in's parameters in host order as a table for people: name, range and default as the
    plug-in shows them, in columns, with a line feed behind each row. Message thread.
*/
juce::String makeParameterTable (const juce::AudioProcessor&);

/** The same for programs: a JSON array with an object for each parameter. Its keys are "name", "default" and either
    "minimum", "maximum" and "unit", the three values being numbers then, or "choices". Message thread.
*/
juce::String makeParameterJson (const juce::AudioProcessor&);
} // namespace cv::render
