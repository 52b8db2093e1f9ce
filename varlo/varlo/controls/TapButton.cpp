#include "varlo/controls/TapButton.h"

namespace cv::varlo
{
TapButton::TapButton (double maxIntervalMilliseconds) : series (maxIntervalMilliseconds)
{
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
