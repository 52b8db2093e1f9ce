#include "varlo/controls/TapButton.h"

namespace cv::varlo
{
TapButton::TapButton (double maxIntervalMilliseconds, Clock clock)
    : series (maxIntervalMilliseconds)
    , getNowMilliseconds (std::move (clock))
{
    setTitle (juce::translate ("Tap Tempo"));
    setTooltip (juce::translate ("Tap in time to set the delay"));
    onClick = [this] { tap(); };
}

TapButton::~TapButton() = default;

void TapButton::tap()
{
    const auto intervalMilliseconds = series.addTap (getNowMilliseconds());

    if (intervalMilliseconds && onTempoTapped)
        onTempoTapped (*intervalMilliseconds);
}
} // namespace cv::varlo
