#include "ParameterText.h"

#include "RenderError.h"

namespace cv::render
{
namespace
{
constexpr int maxTextLength = 256;

/** A choice with more steps than this is asked for its two ends only. */
constexpr int maxChoices = 1024;
} // namespace

ParameterText::ParameterText (juce::AudioProcessorParameter& parameterToUse)
    : parameter (parameterToUse)
    , lowText (textOf (0.0f))
    , highText (textOf (1.0f))
    , low (NumberText::parse (lowText))
    , high (NumberText::parse (highText))
{
    if (low && high)
        return;

    const auto numSteps = isStepped() ? juce::jlimit (2, maxChoices, parameter.getNumSteps()) : 2;

    for (auto step = 0; step < numSteps; ++step)
        choices.add (textOf ((float) step / (float) (numSteps - 1)));
}

juce::String ParameterText::getName() const
{
    return parameter.getName (maxTextLength);
}

juce::String ParameterText::getRange() const
{
    return choices.isEmpty() ? lowText + " to " + highText : choices.joinIntoString (", ");
}

juce::String ParameterText::getDefault() const
{
    return textOf (parameter.getDefaultValue());
}

juce::var ParameterText::describe() const
{
    auto* const object = new juce::DynamicObject();
    const juce::var result (object);
    object->setProperty ("name", getName());

    if (const auto start = NumberText::parse (getDefault()); choices.isEmpty() && start)
    {
        object->setProperty ("minimum", low->number);
        object->setProperty ("maximum", high->number);
        object->setProperty ("default", start->number);
        object->setProperty ("unit", high->unit);
    }
    else
    {
        object->setProperty ("choices", choices);
        object->setProperty ("default", getDefault());
    }

    return result;
}

float ParameterText::toNormalised (const juce::String& typed) const
{
    return choices.isEmpty() ? numberToNormalised (typed) : choiceToNormalised (typed);
}

float ParameterText::numberToNormalised (const juce::String& typed) const
{
    const auto value = NumberText::parse (typed);

    if (! value)
        throw RenderError (getName() + " takes a number from " + getRange() + ", not \"" + typed + "\"");

    if (value->unit.isNotEmpty() && ! value->unit.equalsIgnoreCase (high->unit))
        throw RenderError (getName() + " is given in " + (high->unit.isEmpty() ? "plain numbers" : high->unit)
                           + ", from " + getRange() + ", not \"" + typed + "\"");

    const auto [smallest, largest] = std::minmax (low->number, high->number);

    if (value->number < smallest || value->number > largest)
        throw RenderError (getName() + " goes from " + getRange() + "; \"" + typed + "\" is outside");

    const auto text = toPlainText (value->number) + (high->unit.isEmpty() ? "" : " " + high->unit);
    return juce::jlimit (0.0f, 1.0f, parameter.getValueForText (text));
}

float ParameterText::choiceToNormalised (const juce::String& typed) const
{
    const auto index = choices.indexOf (typed.trim(), true);

    if (index < 0)
        throw RenderError (getName() + " is one of " + getRange() + ", not \"" + typed + "\"");

    return (float) index / (float) (choices.size() - 1);
}

juce::String ParameterText::textOf (float normalised) const
{
    return parameter.getText (normalised, maxTextLength).trim();
}
} // namespace cv::render
