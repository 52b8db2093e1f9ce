#include "varlo/controls/Knob.h"

#include <optional>

namespace cv::varlo
{
namespace
{
constexpr double step = 0.01;
constexpr double fineStep = 0.001;
constexpr double pageStep = 0.1;
constexpr double wholeWay = 1.0;

/** The part of the way that a key turns a knob, upwards if it is above 0; none for all other keys. */
std::optional<double> getTravel (const juce::KeyPress& key)
{
    const auto modifiers = key.getModifiers();

    if (modifiers.isCtrlDown() || modifiers.isAltDown() || modifiers.isCommandDown())
        return {};

    const auto arrowStep = modifiers.isShiftDown() ? fineStep : step;

    for (const auto& [keyCode, travel] :
         { std::pair (juce::KeyPress::upKey, arrowStep), std::pair (juce::KeyPress::rightKey, arrowStep),
           std::pair (juce::KeyPress::downKey, -arrowStep), std::pair (juce::KeyPress::leftKey, -arrowStep),
           std::pair (juce::KeyPress::pageUpKey, pageStep), std::pair (juce::KeyPress::pageDownKey, -pageStep),
           std::pair (juce::KeyPress::endKey, wholeWay), std::pair (juce::KeyPress::homeKey, -wholeWay) })
        if (key.isKeyCode (keyCode))
            return travel;

    return {};
}

/** What a screen reader learns of a knob's value and sets it with. */
class KnobValue final : public juce::AccessibilityValueInterface
{
public:
    explicit KnobValue (Knob& knobToTellOf) : knob (knobToTellOf) {}

    bool isReadOnly() const override { return false; }

    double getCurrentValue() const override { return knob.getValue(); }

    juce::String getCurrentValueAsString() const override { return knob.getTextFromValue (knob.getValue()); }

    void setValue (double newValue) override { knob.moveTo (knob.getRange().clipValue (newValue)); }

    void setValueAsString (const juce::String& text) override { setValue (knob.getValueFromText (text)); }

    /** The interval is that of an arrow key. Readers add and subtract it, so it belongs to where the knob stands. */
    AccessibleValueRange getRange() const override
    {
        const auto value = knob.getValue();
        const auto above = knob.getValueAfter (step) - value;
        const auto interval = above > 0.0 ? above : value - knob.getValueAfter (-step);
        return { { knob.getMinimum(), knob.getMaximum() }, interval };
    }

private:
    Knob& knob;
};

class KnobAccessibility final : public juce::AccessibilityHandler
{
public:
    explicit KnobAccessibility (Knob& knobToTellOf)
        : AccessibilityHandler (knobToTellOf,
                                juce::AccessibilityRole::slider,
                                {},
                                Interfaces { std::make_unique<KnobValue> (knobToTellOf) })
        , knob (knobToTellOf)
    {
    }

    juce::String getHelp() const override { return knob.getTooltip(); }

private:
    Knob& knob;
};
} // namespace

Knob::Knob() : Slider (RotaryVerticalDrag, TextBoxBelow)
{
    setWantsKeyboardFocus (true);
    keepTextBoxOutOfTabOrder();
}

Knob::~Knob() = default;

bool Knob::keyPressed (const juce::KeyPress& key)
{
    if (const auto travel = getTravel (key))
    {
        moveTo (getValueAfter (*travel));
        return true;
    }

    if (key == juce::KeyPress::deleteKey && isDoubleClickReturnEnabled())
    {
        moveTo (getDoubleClickReturnValue());
        return true;
    }

    if (key == juce::KeyPress::returnKey)
    {
        showTextBox();
        return true;
    }

    return false;
}

double Knob::getValueAfter (double proportionOfTravel)
{
    const auto position = valueToProportionOfLength (getValue()) + proportionOfTravel;
    return proportionOfLengthToValue (juce::jlimit (0.0, wholeWay, position));
}

void Knob::moveTo (double newValue)
{
    if (juce::exactlyEqual (newValue, getValue()))
        return;

    const ScopedDragNotification gesture (*this);
    setValue (newValue, juce::sendNotificationSync);
}

void Knob::lookAndFeelChanged()
{
    Slider::lookAndFeelChanged();
    keepTextBoxOutOfTabOrder();
}

void Knob::enablementChanged()
{
    Slider::enablementChanged();
    keepTextBoxOutOfTabOrder();
}

std::unique_ptr<juce::AccessibilityHandler> Knob::createAccessibilityHandler()
{
    return std::make_unique<KnobAccessibility> (*this);
}

/** A label that can be edited is a stop by itself, and opens its editor when Tab comes there. */
void Knob::keepTextBoxOutOfTabOrder()
{
    for (auto* const child : getChildren())
        child->setWantsKeyboardFocus (false);
}
} // namespace cv::varlo
