#include "pluginCore/state/ParameterState.h"

#include "pluginCore/state/TreeXml.h"

#include <set>

namespace cv::pluginCore
{
namespace
{
const juce::Identifier parameterType { "PARAM" };
const juce::Identifier idProperty { "id" };
const juce::Identifier valueProperty { "value" };

float getDefault (const juce::RangedAudioParameter& parameter)
{
    return parameter.convertFrom0to1 (parameter.getDefaultValue());
}

/** A parameter's value, and whether it stands in the tree as it should: as a number within the range. */
struct StoredValue
{
    float value;
    bool isSound;
};

/** JUCE counts an exponent in an int, which ten digits may exceed. */
bool hasHugeExponent (const juce::String& text)
{
    constexpr auto maxDigits = 9;
    auto isInExponent = false;
    auto numDigits = 0;

    for (auto rest = text.getCharPointer(); ! rest.isEmpty();)
    {
        const auto character = rest.getAndAdvance();
        const auto isDigit = character >= '0' && character <= '9';
        const auto isSign = numDigits == 0 && (character == '+' || character == '-');

        if (character == 'e' || character == 'E')
        {
            isInExponent = true;
            numDigits = 0;
        }
        else if (isInExponent && isDigit)
        {
            numDigits += numDigits > 0 || character != '0' ? 1 : 0;

            if (numDigits > maxDigits)
                return true;
        }
        else if (! isSign)
        {
            isInExponent = false;
        }
    }

    return false;
}

StoredValue readValue (const juce::ValueTree& stored, const juce::RangedAudioParameter& parameter)
{
    const auto& value = stored[valueProperty];

    if (! value.isString())
        return { getDefault (parameter), false };

    const auto text = value.toString();

    if (hasHugeExponent (text))
        return { getDefault (parameter), false };

    const auto start = text.getCharPointer().findEndOfWhitespace();
    auto end = start;
    const auto number = juce::CharacterFunctions::readDoubleValue (end);

    if (end == start || std::isnan (number))
        return { getDefault (parameter), false };

    const auto& range = parameter.getNormalisableRange();
    const auto limited = juce::jlimit ((double) range.start, (double) range.end, number);
    return { (float) limited, end.isEmpty() && juce::exactlyEqual (limited, number) };
}

/** Whether a parameter's tree is of its type and has its properties once: XML may give an attribute twice. */
bool isWellFormed (const juce::ValueTree& stored)
{
    auto numIds = 0;
    auto numValues = 0;

    for (auto i = 0; i < stored.getNumProperties(); ++i)
    {
        const auto name = stored.getPropertyName (i);
        numIds += name == idProperty ? 1 : 0;
        numValues += name == valueProperty ? 1 : 0;
    }

    return stored.hasType (parameterType) && numIds == 1 && numValues <= 1;
}

juce::ValueTree makeStored (const juce::RangedAudioParameter& parameter, float value)
{
    return juce::ValueTree (parameterType, { { idProperty, parameter.paramID }, { valueProperty, value } });
}

/** Makes what a tree stores at an index a value that its parameter can take. */
void mendStored (juce::ValueTree& state, int index, const juce::RangedAudioParameter& parameter)
{
    auto stored = state.getChild (index);
    const auto [value, isSound] = readValue (stored, parameter);

    if (! isWellFormed (stored))
    {
        state.removeChild (index, nullptr);
        state.addChild (makeStored (parameter, value), index, nullptr);
    }
    else if (! isSound)
    {
        stored.setProperty (valueProperty, value, nullptr);
    }
}

/** Makes a tree hold one value for each parameter, so that what is saved afterwards is complete. Of several for
    one parameter the last one counts.
*/
void mendState (juce::ValueTree& state, const juce::AudioProcessorValueTreeState& valueTreeState)
{
    std::set<const juce::RangedAudioParameter*> found;

    for (auto i = state.getNumChildren(); --i >= 0;)
        if (const auto* parameter = valueTreeState.getParameter (state.getChild (i)[idProperty].toString()))
        {
            if (found.insert (parameter).second)
                mendStored (state, i, *parameter);
            else
                state.removeChild (i, nullptr);
        }

    for (const auto* parameter : valueTreeState.processor.getParameters())
        if (const auto* ranged = dynamic_cast<const juce::RangedAudioParameter*> (parameter);
            ranged != nullptr && ! found.contains (ranged))
            state.appendChild (makeStored (*ranged, getDefault (*ranged)), nullptr);
}
} // namespace

void applyParameterState (juce::AudioProcessorValueTreeState& valueTreeState, const juce::XmlElement& xml)
{
    auto state = treeFromXml (xml);
    mendState (state, valueTreeState);
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
