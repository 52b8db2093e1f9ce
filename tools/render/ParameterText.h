#pragma once

#include "NumberText.h"

#include <juce_audio_processors/juce_audio_processors.h>

namespace cv::render
{
/** A parameter's values as texts, learnt from the plug-in as a host can learn them: by asking for the
    text of a value. Message thread.
*/
class ParameterText
{
public:
    /** Asks the parameter, which outlives this object, for its texts. */
    explicit ParameterText (juce::AudioProcessorParameter&);

    juce::AudioProcessorParameter& getParameter() const noexcept { return parameter; }

    juce::String getName() const;

    /** "1.0 ms to 10000.0 ms", or "Off, On" for a parameter whose texts are no numbers. */
    juce::String getRange() const;

    juce::String getDefault() const;

    /** Name, range and default as the object that makeParameterJson() tells of. */
    juce::var describe() const;

    /** True for a switch and a choice: values between two steps mean nothing. */
    bool isStepped() const noexcept { return parameter.isDiscrete(); }

    /** The normalised value, 0 to 1, of a text as a user types it: a number with or without the unit
        that the plug-in shows, or one of the texts of a parameter that shows no numbers. Throws
        RenderError for any other text and for a number outside the range.
    */
    float toNormalised (const juce::String& typed) const;

private:
    float numberToNormalised (const juce::String& typed) const;
    float choiceToNormalised (const juce::String& typed) const;
    juce::String textOf (float normalised) const;

    juce::AudioProcessorParameter& parameter;
    juce::String lowText;
    juce::String highText;
    std::optional<NumberText> low;
    std::optional<NumberText> high;

    /** The texts of all steps, in order, when they are no numbers. */
    juce::StringArray choices;
};
} // namespace cv::render
