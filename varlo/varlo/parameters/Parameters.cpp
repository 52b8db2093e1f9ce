#include "varlo/parameters/Parameters.h"

#include "pluginCore/parameters/NumberRange.h"
#include "varlo/parameters/ValueText.h"

#include <algorithm>
#include <array>

namespace cv::varlo
{
namespace
{
// The skew of a range that has its middle at c is ln 0.5 / ln((c - start) / (end - start)).
constexpr float delaySkew = 0.30091232f;   // 1000 ms
constexpr float lowpassSkew = 0.29985148f; // 2000 Hz

struct Range
{
    float start;
    float end;
    float skew = 1.0f;
};

struct Texts
{
    juce::AudioParameterFloatAttributes (*getAttributes) (int numDecimals);
    int numDecimals;
};

/** All there is to say about a parameter. Range and default are in the unit that it shows. */
struct Description
{
    const char* id;
    const char* name;
    Range range;
    float defaultValue;
    Texts texts;
    float ParameterValues::*value;
};

/** The parameters in host order. */
constexpr std::array descriptions {
    Description { .id = parameterIds::mix,
                  .name = "Mix",
                  .range = { 0.0f, 100.0f },
                  .defaultValue = 50.0f,
                  .texts = { getPercentAttributes, 0 },
                  .value = &ParameterValues::mixPercent },
    Description { .id = parameterIds::degrade,
                  .name = "Degrade",
                  .range = { 0.0f, 100.0f },
                  .defaultValue = 0.0f,
                  .texts = { getPercentAttributes, 0 },
                  .value = &ParameterValues::degradePercent },
    Description { .id = parameterIds::delay,
                  .name = "Delay",
                  .range = { 1.0f, 10000.0f, delaySkew },
                  .defaultValue = 1000.0f,
                  .texts = { getTimeAttributes, 1 },
                  .value = &ParameterValues::delayMilliseconds },
    Description { .id = parameterIds::feedback,
                  .name = "Feedback",
                  .range = { 0.0f, 100.0f },
                  .defaultValue = 50.0f,
                  .texts = { getPercentAttributes, 0 },
                  .value = &ParameterValues::feedbackPercent },
    Description { .id = parameterIds::lowpass,
                  .name = "Lowpass",
                  .range = { 20.0f, 20000.0f, lowpassSkew },
                  .defaultValue = 5000.0f,
                  .texts = { getFreqAttributes, 0 },
                  .value = &ParameterValues::lowpassHz },
    Description { .id = parameterIds::resonance,
                  .name = "Resonance",
                  .range = { 0.0f, 100.0f },
                  .defaultValue = 0.0f,
                  .texts = { getPercentAttributes, 0 },
                  .value = &ParameterValues::resonancePercent },
};

/** Whether no value has two parameters, which would leave another one without. */
constexpr bool valuesAreDistinct() noexcept
{
    for (auto one = descriptions.begin(); one != descriptions.end(); ++one)
        if (std::any_of (descriptions.begin(), one, [&] (const auto& other) { return other.value == one->value; }))
            return false;

    return true;
}

static_assert (sizeof (ParameterValues) == descriptions.size() * sizeof (float) && valuesAreDistinct(),
               "each value has its parameter");

/** A filter that has once been fed with NaN gives nothing else from then on. */
float finiteOr (float defaultValue, const juce::AudioParameterFloat& parameter) noexcept
{
    const auto value = parameter.get();
    return std::isfinite (value) ? value : defaultValue;
}
} // namespace

juce::AudioProcessorValueTreeState::ParameterLayout Parameters::createLayout()
{
    constexpr auto version = 1;
    juce::AudioProcessorValueTreeState::ParameterLayout layout;

    for (const auto& description : descriptions)
    {
        const auto& [start, end, skew] = description.range;
        const auto& [getAttributes, numDecimals] = description.texts;
        layout.add (std::make_unique<juce::AudioParameterFloat> (
            juce::ParameterID (description.id, version), description.name,
            pluginCore::makeNumberRange (start, end, skew), description.defaultValue, getAttributes (numDecimals)));
    }

    return layout;
}

Parameters::Parameters (const juce::AudioProcessorValueTreeState& tree)
{
    for (const auto& description : descriptions)
        parameters.push_back (&dynamic_cast<const juce::AudioParameterFloat&> (*tree.getParameter (description.id)));
}

ParameterValues Parameters::getValues() const noexcept
{
    ParameterValues values {};

    for (size_t i = 0; i < descriptions.size(); ++i)
        values.*descriptions[i].value = finiteOr (descriptions[i].defaultValue, *parameters[i]);

    return values;
}
} // namespace cv::varlo
