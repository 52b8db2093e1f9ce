#include "varlo/controls/BlinkingLed.h"

#include "varlo/controls/ImageAccessibility.h"
#include "varlo/lookAndFeel/Palette.h"

namespace cv::varlo
{
namespace
{
constexpr int longestFlashMilliseconds = 40;
constexpr int shortestFlashMilliseconds = 20;
constexpr int shortestTimerIntervalMilliseconds = 1;
} // namespace

BlinkingLed::BlinkingLed()
{
    setTitle (juce::translate ("Tempo light"));
    setHelpText (juce::translate ("Flashes once in each delay"));
}

BlinkingLed::~BlinkingLed() = default;

std::unique_ptr<juce::AccessibilityHandler> BlinkingLed::createAccessibilityHandler()
{
    return makeImageAccessibility (*this, [this] { return juce::String (blinkIntervalMilliseconds) + " ms"; });
}

void BlinkingLed::setBlinkInterval (int milliseconds)
{
    blinkIntervalMilliseconds = milliseconds;

    // A timer with a shorter interval is widened by its next tick.
    if (getTimerInterval() == milliseconds || (isTimerRunning() && getTimerInterval() < milliseconds))
        return;

    startTimer (juce::jmax (milliseconds, shortestTimerIntervalMilliseconds));

    if (juce::Time::getMillisecondCounterHiRes() - lastBlinkTimeMilliseconds > milliseconds)
        timerCallback();
}

void BlinkingLed::setLedColour (juce::Colour colour)
{
    if (std::exchange (ledColour, colour) != colour)
        repaint();
}

void BlinkingLed::setLit (bool shouldBeLit)
{
    if (std::exchange (lit, shouldBeLit) != shouldBeLit)
        repaint();
}

std::optional<int> BlinkingLed::getFlashMilliseconds (int blinkIntervalMilliseconds) noexcept
{
    const auto flashMilliseconds = juce::jmin (blinkIntervalMilliseconds / 4, longestFlashMilliseconds);
    return flashMilliseconds < shortestFlashMilliseconds ? std::nullopt : std::optional (flashMilliseconds);
}

void BlinkingLed::timerCallback()
{
    lastBlinkTimeMilliseconds = juce::Time::getMillisecondCounterHiRes();

    if (blinkIntervalMilliseconds > getTimerInterval())
        startTimer (juce::jmax (blinkIntervalMilliseconds, shortestTimerIntervalMilliseconds));

    setLit (true);

    const auto flashMilliseconds = getFlashMilliseconds (blinkIntervalMilliseconds);

    if (! flashMilliseconds.has_value())
        return;

    juce::Timer::callAfterDelay (*flashMilliseconds,
                                 [led = juce::Component::SafePointer<BlinkingLed> (this)]
                                 {
                                     if (led != nullptr)
                                         led->setLit (false);
                                 });
}

void BlinkingLed::paint (juce::Graphics& g)
{
    setLedColour (palette::led);

    constexpr auto rimThickness = 2.0f;
    const auto area = getLocalBounds().toFloat();

    g.setColour (lit ? ledColour : juce::Colours::black);
    g.fillEllipse (area);

    g.setGradientFill (
        juce::ColourGradient (palette::rimTop, 0.0f, 0.0f, palette::rimBottom, 0.0f, area.getHeight(), false));
    g.drawEllipse (area.reduced (1.0f), rimThickness);
}
} // namespace cv::varlo
