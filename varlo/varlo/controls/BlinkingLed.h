#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <optional>

namespace cv::varlo
{
/** A round lamp that flashes once in every interval, for a quarter of it and 40 ms at most. Where a quarter would
    be under 20 ms it stays lit. Message thread.
*/
class BlinkingLed final : public juce::Component, public juce::Timer
{
public:
    BlinkingLed();
    ~BlinkingLed() override;

    /** Milliseconds from flash to flash; 0 on a lamp that has never flashed leaves it dark. A longer interval
        counts from the next flash on, a shorter one at once.
    */
    void setBlinkInterval (int milliseconds);

    /** How long a flash lasts when they follow each other after so many milliseconds; none where it doesn't end. */
    static std::optional<int> getFlashMilliseconds (int blinkIntervalMilliseconds) noexcept;

    void setLedColour (juce::Colour);

    void paint (juce::Graphics&) override;
    void timerCallback() override;

    /** Its value is the interval: a reader that asks now and then would only meet a flash by chance. */
    std::unique_ptr<juce::AccessibilityHandler> createAccessibilityHandler() override;

private:
    void setLit (bool);

    bool lit = false;
    juce::Colour ledColour = juce::Colours::red;
    int blinkIntervalMilliseconds = 0;
    double lastBlinkTimeMilliseconds = 0.0;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (BlinkingLed)
};
} // namespace cv::varlo
