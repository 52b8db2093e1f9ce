#include "controls/TapButton.h"

namespace cv::varlo
{
TapButton::TapButton (double maxIntervalMs) : series (maxIntervalMs)
{
    onClick = [this] { tap(); };
}

TapButton::~TapButton() = default;

void TapButton::tap()
{
    const auto intervalMs = series.addTap (juce::Time::getMillisecondCounterHiRes());

    if (intervalMs && onTempoTapped)
        onTempoTapped (*intervalMs);
}
} // namespace cv::varlo
