#include "controls/BlinkingLed.h"

#include "lookAndFeel/Palette.h"

namespace cv::varlo
{
namespace
{
constexpr int longestFlashMs = 40;
constexpr int shortestFlashMs = 20;
constexpr int shortestTimerIntervalMs = 1;
} // namespace

BlinkingLed::~BlinkingLed() = default;

void BlinkingLed::setBlinkInterval (int ms)
{
    blinkIntervalMs = ms;

    // A timer with a shorter interval is widened by its next tick.
    if (getTimerInterval() == ms || (isTimerRunning() && getTimerInterval() < ms))
        return;

    startTimer (juce::jmax (ms, shortestTimerIntervalMs));

    if (juce::Time::getMillisecondCounterHiRes() - lastBlinkTimeMs > ms)
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

std::optional<int> BlinkingLed::getFlashMs (int blinkIntervalMs) noexcept
{
    const auto flashMs = juce::jmin (blinkIntervalMs / 4, longestFlashMs);
    return flashMs < shortestFlashMs ? std::nullopt : std::optional (flashMs);
}

void BlinkingLed::timerCallback()
{
    lastBlinkTimeMs = juce::Time::getMillisecondCounterHiRes();

    if (blinkIntervalMs > getTimerInterval())
        startTimer (juce::jmax (blinkIntervalMs, shortestTimerIntervalMs));

    setLit (true);

    const auto flashMs = getFlashMs (blinkIntervalMs);

    if (! flashMs.has_value())
        return;

    juce::Timer::callAfterDelay (*flashMs,
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
