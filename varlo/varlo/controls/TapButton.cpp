#include "varlo/controls/TapButton.h"

namespace cv::varlo
{
TapButton::TapButton (double maxIntervalMilliseconds) : series (maxIntervalMilliseconds)
{
    setTitle (juce::translate ("Tap Tempo"));
    setTooltip (juce::translate ("Tap in time to set the delay"));
    onClick = [this] { tap(); };
}

TapButton::~TapButton() = default;

void TapButton::tap()
{
    const auto intervalMilliseconds = series.addTap (juce::Time::getMillisecondCounterHiRes());

    if (intervalMilliseconds && onTempoTapped)
        onTempoTapped (*intervalMilliseconds);
}
} // namespace cv::varlo
