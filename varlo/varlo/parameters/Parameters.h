#pragma once

#include "varlo/dsp/ParameterValues.h"

#include <juce_audio_processors/juce_audio_processors.h>

namespace cv::varlo
{
/** What saved projects, presets and hosts know the parameters by. */
namespace parameterIds
{
inline constexpr auto mix = "mix";
inline constexpr auto degrade = "degrade";
inline constexpr auto delay = "delay";
inline constexpr auto feedback = "feedback";
inline constexpr auto lowpass = "lowpass";
inline constexpr auto resonance = "resonance";
} // namespace parameterIds

/** The parameters of the product: what they are, and where their values are read. */
class Parameters
{
public:
    /** The parameters in host order. IDs, order and ranges are a contract with saved projects. */
    static juce::AudioProcessorValueTreeState::ParameterLayout createLayout();

    /** Looks all of them up in a tree that was built from createLayout() and outlives this object. */
    explicit Parameters (const juce::AudioProcessorValueTreeState&);

    /** The present values, in display units; the default of a parameter that holds no finite number. Any thread,
        lock-free; an atomic read for each, not one snapshot.
    */
    ParameterValues getValues() const noexcept;

private:
    std::vector<const juce::AudioParameterFloat*> parameters; // in host order
};
} // namespace cv::varlo
