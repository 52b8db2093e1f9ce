#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::varlo
{
/** What a button looks like at the moment. */
struct ButtonState
{
    bool isEnabled = true;
    bool isHighlighted = false;
    bool isDown = false;
    bool isToggled = false;
    bool isInPresetsBar = false;
};

/** Reads a button's state. Message thread. */
ButtonState getButtonState (const juce::Button&, bool isHighlighted, bool isDown);

/** The rounded shape of a button of this size in logical pixels, inside its edges. Any thread. */
juce::Path makeButtonShape (int width, int height);

/** What fills that shape: the button's own colour when it is on, opaque whatever its own alpha is, and the
    groove's when it is off. Outside the presets bar it is the other way round: there a button is a lit key that
    goes dark while it is held. Any thread.
*/
juce::Colour getButtonFill (const ButtonState&, juce::Colour ownColour, juce::Colour grooveColour) noexcept;

/** Draws shape and shadow. Message thread. */
void paintButtonShape (
    juce::Graphics&, const juce::Path&, bool isEnabled, juce::Colour fill, juce::Point<int> shadowOffset);

/** A caption as it is shown, with a capital at its start. Any thread. */
juce::String getShownCaption (const juce::String& caption);

/** Where the caption goes in a button of this size, in logical pixels, never with a negative size. The tap button's
    caption takes the whole width and sits a logical pixel higher. Any thread.
*/
juce::Rectangle<int> getCaptionArea (int width, int height, const juce::String& caption) noexcept;

/** The caption's colour, not yet dimmed. An unlit caption follows the mouse. Any thread. */
juce::Colour getCaptionColour (const ButtonState&,
                               juce::Colour inPresetsBar,
                               juce::Colour onLitButton,
                               juce::Colour onDarkButton) noexcept;

/** Draws a caption in one or two lines in that colour, dimmed when the button is disabled. Message thread. */
void paintCaption (juce::Graphics&, const juce::TextButton&, const ButtonState&, const juce::Font&, juce::Colour);

/** Draws the shadow of a button's image, which is the button's child and draws itself. Message thread. */
void paintDrawableButtonShadow (juce::Graphics&, const juce::DrawableButton&);
} // namespace cv::varlo
