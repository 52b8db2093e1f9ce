#include "parameters/Parameters.h"

#include "parameters/NumberRange.h"
#include "parameters/ParameterIds.h"
#include "parameters/ValueText.h"

namespace cv::varlo
{
namespace
{
using Range = juce::NormalisableRange<float>;

// The skew of a range that has its middle at c is ln 0.5 / ln((c - start) / (end - start)).
constexpr float delaySkew = 0.30091232f;   // 1000 ms
constexpr float lowpassSkew = 0.29985148f; // 2000 Hz

const Range percentRange = pluginCore::makeNumberRange (0.0f, 100.0f);
const Range delayRangeMilliseconds = pluginCore::makeNumberRange (1.0f, 10000.0f, delaySkew);
const Range lowpassRangeHz = pluginCore::makeNumberRange (20.0f, 20000.0f, lowpassSkew);

constexpr ParameterValues defaults { .mixPercent = 50.0f,
                                     .degradePercent = 0.0f,
                                     .delayMilliseconds = 1000.0f,
                                     .feedbackPercent = 50.0f,
                                     .lowpassHz = 5000.0f,
                                     .resonancePercent = 0.0f };

/** A filter that has once been fed with NaN gives nothing else from then on. */
float finiteOr (float defaultValue, const juce::AudioParameterFloat& parameter) noexcept
{
    const auto value = parameter.get();
    return std::isfinite (value) ? value : defaultValue;
}

const juce::AudioParameterFloat& find (const juce::AudioProcessorValueTreeState& tree, const char* id)
{
    return dynamic_cast<const juce::AudioParameterFloat&> (*tree.getParameter (id));
}
} // namespace

juce::AudioProcessorValueTreeState::ParameterLayout Parameters::createLayout()
{
    const auto makeParameter = [] (const char* id, const char* name, const Range& range, float value, const auto& texts)
    {
        constexpr auto version = 1;
        return std::make_unique<juce::AudioParameterFloat> (juce::ParameterID (id, version), name, range, value, texts);
    };

    const auto percent = getPercentAttributes (0);
    const auto time = getTimeAttributes (1);
    const auto freq = getFreqAttributes (0);

    return { makeParameter (parameterIds::mix, "Mix", percentRange, defaults.mixPercent, percent),
             makeParameter (parameterIds::degrade, "Degrade", percentRange, defaults.degradePercent, percent),
             makeParameter (parameterIds::delay, "Delay", delayRangeMilliseconds, defaults.delayMilliseconds, time),
             makeParameter (parameterIds::feedback, "Feedback", percentRange, defaults.feedbackPercent, percent),
             makeParameter (parameterIds::lowpass, "Lowpass", lowpassRangeHz, defaults.lowpassHz, freq),
             makeParameter (parameterIds::resonance, "Resonance", percentRange, defaults.resonancePercent, percent) };
}

Parameters::Parameters (const juce::AudioProcessorValueTreeState& tree)
    : mix (find (tree, parameterIds::mix))
    , degrade (find (tree, parameterIds::degrade))
    , delay (find (tree, parameterIds::delay))
    , feedback (find (tree, parameterIds::feedback))
    , lowpass (find (tree, parameterIds::lowpass))
    , resonance (find (tree, parameterIds::resonance))
{
}

ParameterValues Parameters::getValues() const noexcept
{
    return { .mixPercent = finiteOr (defaults.mixPercent, mix),
             .degradePercent = finiteOr (defaults.degradePercent, degrade),
             .delayMilliseconds = finiteOr (defaults.delayMilliseconds, delay),
             .feedbackPercent = finiteOr (defaults.feedbackPercent, feedback),
             .lowpassHz = finiteOr (defaults.lowpassHz, lowpass),
             .resonancePercent = finiteOr (defaults.resonancePercent, resonance) };
}
} // namespace cv::varlo
