#include "varlo/parameters/Parameters.h"

#include "pluginCore/parameters/NumberRange.h"
#include "varlo/parameters/ValueText.h"

#include <array>

namespace cv::varlo
{
namespace
{
// The skew of a range that has its middle at c is ln 0.5 / ln((c - start) / (end - start)).
constexpr float delaySkew = 0.30091232f;   // 1000 ms
constexpr float lowpassSkew = 0.29985148f; // 2000 Hz

/** All there is to say about a parameter. Range and default are in the unit that it shows. */
struct Description
{
    const char* id;
    const char* name;
    juce::NormalisableRange<float> range;
    float defaultValue;
    juce::AudioParameterFloatAttributes texts;
    float ParameterValues::*value;
};

/** The parameters in host order. */
const std::array descriptions {
    Description { .id = parameterIds::mix,
                  .name = "Mix",
                  .range = pluginCore::makeNumberRange (0.0f, 100.0f),
                  .defaultValue = 50.0f,
                  .texts = getPercentAttributes (0),
                  .value = &ParameterValues::mixPercent },
    Description { .id = parameterIds::degrade,
                  .name = "Degrade",
                  .range = pluginCore::makeNumberRange (0.0f, 100.0f),
                  .defaultValue = 0.0f,
                  .texts = getPercentAttributes (0),
                  .value = &ParameterValues::degradePercent },
    Description { .id = parameterIds::delay,
                  .name = "Delay",
                  .range = pluginCore::makeNumberRange (1.0f, 10000.0f, delaySkew),
                  .defaultValue = 1000.0f,
                  .texts = getTimeAttributes (1),
                  .value = &ParameterValues::delayMilliseconds },
    Description { .id = parameterIds::feedback,
                  .name = "Feedback",
                  .range = pluginCore::makeNumberRange (0.0f, 100.0f),
                  .defaultValue = 50.0f,
                  .texts = getPercentAttributes (0),
                  .value = &ParameterValues::feedbackPercent },
    Description { .id = parameterIds::lowpass,
                  .name = "Lowpass",
                  .range = pluginCore::makeNumberRange (20.0f, 20000.0f, lowpassSkew),
                  .defaultValue = 5000.0f,
                  .texts = getFreqAttributes (0),
                  .value = &ParameterValues::lowpassHz },
    Description { .id = parameterIds::resonance,
                  .name = "Resonance",
                  .range = pluginCore::makeNumberRange (0.0f, 100.0f),
                  .defaultValue = 0.0f,
                  .texts = getPercentAttributes (0),
                  .value = &ParameterValues::resonancePercent },
};

static_assert (sizeof (ParameterValues) == std::tuple_size_v<decltype (descriptions)> * sizeof (float),
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
        layout.add (std::make_unique<juce::AudioParameterFloat> (juce::ParameterID (description.id, version),
                                                                 description.name, description.range,
                                                                 description.defaultValue, description.texts));

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
