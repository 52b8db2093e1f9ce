#include "state/ParameterState.h"

#include "state/TreeXml.h"

namespace cv::pluginCore
{
namespace
{
const juce::Identifier parameterType { "PARAM" };
const juce::Identifier idProperty { "id" };
const juce::Identifier valueProperty { "value" };

/** Makes one stored value one that its parameter can take: within its range, and a number at all. */
void limitValue (juce::ValueTree stored, const juce::RangedAudioParameter& parameter)
{
    if (! stored.hasProperty (valueProperty))
        return;

    const auto& range = parameter.getNormalisableRange();
    const auto value = (float) stored[valueProperty];

    if (std::isnan (value))
        stored.removeProperty (valueProperty, nullptr);
    else if (value < range.start || value > range.end)
        stored.setProperty (valueProperty, juce::jlimit (range.start, range.end, value), nullptr);
}

/** Gives a tree a value for the parameter, so that what is saved afterwards is complete. */
void addMissingValue (juce::ValueTree& state, const juce::RangedAudioParameter& parameter)
{
    auto stored = state.getChildWithProperty (idProperty, parameter.paramID);

    if (! stored.isValid())
    {
        stored = juce::ValueTree (parameterType, { { idProperty, parameter.paramID } });
        state.appendChild (stored, nullptr);
    }

    if (! stored.hasProperty (valueProperty))
        stored.setProperty (valueProperty, parameter.convertFrom0to1 (parameter.getDefaultValue()), nullptr);
}
} // namespace

void applyParameterState (juce::AudioProcessorValueTreeState& valueTreeState, const juce::XmlElement& xml)
{
    auto state = treeFromXml (xml);

    for (const auto& stored : state)
        if (const auto* parameter = valueTreeState.getParameter (stored[idProperty].toString()))
            limitValue (stored, *parameter);

    for (const auto* parameter : valueTreeState.processor.getParameters())
        if (const auto* ranged = dynamic_cast<const juce::RangedAudioParameter*> (parameter))
            addMissingValue (state, *ranged);

    valueTreeState.replaceState (state);
}

ParameterLocks::ParameterLocks (const juce::AudioProcessorValueTreeState& valueTreeState,
                                const juce::StringArray& parameterIds)
{
    for (const auto& id : parameterIds)
        if (auto* parameter = valueTreeState.getParameter (id))
            locks.push_back ({ parameter, valueTreeState.getRawParameterValue (id)->load() });
}

void ParameterLocks::putBack() const
{
    for (const auto& lock : locks)
    {
        juce::AudioProcessorParameter& parameter = *lock.parameter;
        const auto normalised = lock.parameter->convertTo0to1 (lock.value);

        parameter.beginChangeGesture();
        parameter.setValue (normalised);
        parameter.sendValueChangedMessageToListeners (normalised);
        parameter.endChangeGesture();
    }
}
} // namespace cv::pluginCore
