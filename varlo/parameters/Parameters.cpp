#include "parameters/Parameters.h"

#include "parameters/ValueText.h"

namespace cv::varlo
{
namespace
{
const juce::ParameterID mixId { "mix", 1 };
const juce::ParameterID degradeId { "degrade", 1 };
const juce::ParameterID delayId { "delay", 1 };
const juce::ParameterID feedbackId { "feedback", 1 };
const juce::ParameterID lowpassId { "lowpass", 1 };
const juce::ParameterID resonanceId { "resonance", 1 };

using Range = juce::NormalisableRange<float>;

constexpr float continuous = 0.0f;

// The skew of a range that has its middle at c is ln 0.5 / ln((c - start) / (end - start)).
constexpr float delaySkew = 0.30091232f;   // 1000 ms
constexpr float lowpassSkew = 0.29985148f; // 2000 Hz

const Range percentRange { 0.0f, 100.0f, continuous, 1.0f };
const Range delayRangeMilliseconds { 1.0f, 10000.0f, continuous, delaySkew };
const Range lowpassRangeHz { 20.0f, 20000.0f, continuous, lowpassSkew };

const juce::AudioParameterFloat& find (const juce::AudioProcessorValueTreeState& tree, const juce::ParameterID& id)
{
    return dynamic_cast<const juce::AudioParameterFloat&> (*tree.getParameter (id.getParamID()));
}
} // namespace

juce::AudioProcessorValueTreeState::ParameterLayout Parameters::createLayout()
{
    using Parameter = juce::AudioParameterFloat;

    const auto percent = getPercentAttributes (0);
    const auto time = getTimeAttributes (1);
    const auto freq = getFreqAttributes (0);

    return { std::make_unique<Parameter> (mixId, "Mix", percentRange, 50.0f, percent),
             std::make_unique<Parameter> (degradeId, "Degrade", percentRange, 0.0f, percent),
             std::make_unique<Parameter> (delayId, "Delay", delayRangeMilliseconds, 1000.0f, time),
             std::make_unique<Parameter> (feedbackId, "Feedback", percentRange, 50.0f, percent),
             std::make_unique<Parameter> (lowpassId, "Lowpass", lowpassRangeHz, 5000.0f, freq),
             std::make_unique<Parameter> (resonanceId, "Resonance", percentRange, 0.0f, percent) };
}

Parameters::Parameters (const juce::AudioProcessorValueTreeState& tree)
    : mix (find (tree, mixId))
    , degrade (find (tree, degradeId))
    , delay (find (tree, delayId))
    , feedback (find (tree, feedbackId))
    , lowpass (find (tree, lowpassId))
    , resonance (find (tree, resonanceId))
{
}

ParameterValues Parameters::getValues() const noexcept
{
    return { mix.get(), degrade.get(), delay.get(), feedback.get(), lowpass.get(), resonance.get() };
}
} // namespace cv::varlo
