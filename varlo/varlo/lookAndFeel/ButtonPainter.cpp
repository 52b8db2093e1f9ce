#include "varlo/lookAndFeel/ButtonPainter.h"

#include "pluginCore/lookAndFeel/Markers.h"
#include "varlo/lookAndFeel/ControlState.h"
#include "varlo/lookAndFeel/Markers.h"

namespace cv::varlo
{
namespace
{
bool isTapCaption (const juce::String& caption)
{
    return caption.startsWith ("Tap");
}

float getCornerSize (int height) noexcept
{
    return juce::jmin (6.0f, 0.25f * (float) juce::jmax (height, 0));
}
} // namespace

ButtonState getButtonState (const juce::Button& button, bool isHighlighted, bool isDown)
{
    return { .isEnabled = button.isEnabled(),
             .isHighlighted = isHighlighted,
             .isDown = isDown,
             .isToggled = button.getToggleState(),
             .isInPresetsBar = pluginCore::liesInMarked (button, pluginCore::markers::presetsBar) };
}

juce::Path makeButtonShape (int width, int height)
{
    constexpr auto margin = 2.5f;

    juce::Path path;
    path.addRoundedRectangle (juce::Rectangle (width, height).toFloat().reduced (margin), getCornerSize (height - 4));
    return path;
}

juce::Colour getButtonFill (const ButtonState& state, juce::Colour ownColour, juce::Colour grooveColour) noexcept
{
    constexpr auto disabledDarkening = 0.2f;

    const auto alpha = getControlAlpha (state.isEnabled);
    const auto isOff = ! state.isDown && ! state.isToggled;

    if (isOff == state.isInPresetsBar)
        return grooveColour.withMultipliedAlpha (alpha);

    return ownColour.darker (state.isEnabled ? 0.0f : disabledDarkening).withAlpha (alpha);
}

void paintButtonShape (
    juce::Graphics& g, const juce::Path& shape, bool isEnabled, juce::Colour fill, juce::Point<int> shadowOffset)
{
    constexpr auto shadowAlpha = 0.5f;
    constexpr auto shadowRadius = 1;

    const auto shadow = juce::Colours::black.withAlpha (shadowAlpha * getControlAlpha (isEnabled));
    juce::DropShadow (shadow, shadowRadius, shadowOffset).drawForPath (g, shape);
    g.setColour (fill);
    g.fillPath (shape);
}

juce::String getShownCaption (const juce::String& caption)
{
    return caption.substring (0, 1).toUpperCase() + caption.substring (1);
}

juce::Rectangle<int> getCaptionArea (int width, int height, const juce::String& caption) noexcept
{
    const auto isTap = isTapCaption (caption);
    const auto margin = isTap ? 0 : (int) getCornerSize (height) + 2;
    const auto indent = juce::jmin (juce::roundToInt (0.3f * (float) height), 4);

    return juce::Rectangle (width, height).reduced (margin, indent).translated (0, isTap ? -1 : 0);
}

juce::Colour getCaptionColour (const ButtonState& state,
                               juce::Colour inPresetsBar,
                               juce::Colour onLitButton,
                               juce::Colour onDarkButton) noexcept
{
    constexpr auto restingDarkening = 0.1f, disabledDarkening = 0.4f;

    if (state.isInPresetsBar)
        return inPresetsBar;

    if (! state.isDown && ! state.isToggled)
        return onLitButton;

    if (! state.isEnabled)
        return onDarkButton.darker (disabledDarkening);

    return state.isHighlighted ? onDarkButton : onDarkButton.darker (restingDarkening);
}

void paintCaption (juce::Graphics& g,
                   const juce::TextButton& button,
                   const ButtonState& state,
                   const juce::Font& font,
                   juce::Colour colour)
{
    constexpr juce::uint8 edgeAlpha = 89;
    constexpr auto maximumLines = 2;
    constexpr auto standardSqueezing = 0.0f;

    const auto isLeft = (bool) button.getProperties()[properties::captionAtLeft];
    const auto alpha = getControlAlpha (state.isEnabled);
    const auto caption = getShownCaption (button.getButtonText());
    const auto area = getCaptionArea (button.getWidth(), button.getHeight(), button.getButtonText());

    const auto draw = [&] (juce::Colour textColour)
    {
        g.setColour (textColour.withMultipliedAlpha (alpha));
        g.drawFittedText (caption, area, isLeft ? juce::Justification::left : juce::Justification::centred,
                          maximumLines, standardSqueezing);
    };

    g.setFont (font);

    // In the same place: this makes the letters bolder and their edges darker.
    if (! state.isToggled || state.isHighlighted)
        draw (juce::Colours::black.withAlpha (edgeAlpha));

    draw (colour);
}

void paintDrawableButtonShadow (juce::Graphics& g, const juce::DrawableButton& button)
{
    constexpr auto shadowRadius = 2;

    const auto* const image = button.getCurrentImage();

    if (image == nullptr)
        return;

    const auto strength = button.getToggleState() ? 0.8f : button.isMouseOver() ? 0.6f : 0.4f;
    const auto shadow = juce::Colours::black.withAlpha (strength * getControlAlpha (button.isEnabled()));
    juce::DropShadow (shadow, shadowRadius, shadowOffsetFor (button)).drawForPath (g, image->getOutlineAsPath());
}
} // namespace cv::varlo
