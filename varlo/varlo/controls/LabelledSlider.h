#pragma once

#include "varlo/controls/Knob.h"

#include <juce_audio_processors/juce_audio_processors.h>

namespace cv::varlo
{
/** A knob for a parameter, with a caption below. Its changes can be undone if the tree has an undo manager.
    Message thread.
*/
class LabelledSlider final : public juce::Component
{
public:
    /** The tree outlives it. A knob for a parameter that the tree doesn't have moves nothing. Screen readers say the
        parameter's name, where the caption may be short for it, and the help.
    */
    LabelledSlider (juce::AudioProcessorValueTreeState& state,
                    const juce::String& parameterID,
                    const juce::String& caption,
                    const juce::String& help = {});

    ~LabelledSlider() override;

    void resized() override;

private:
    juce::RangedAudioParameter* const parameter;
    bool isDragged = false;
    Knob slider;
    std::unique_ptr<juce::SliderParameterAttachment> attachment; // goes before the slider does
    juce::Label label;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (LabelledSlider)
};
} // namespace cv::varlo
