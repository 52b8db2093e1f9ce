#pragma once

#include "varlo/controls/TapSeries.h"

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

namespace cv::varlo
{
/** A button that a musician taps the tempo on. Message thread. */
class TapButton final : public juce::TextButton
{
public:
    /** The time in milliseconds, as TapSeries wants it. */
    using Clock = std::function<double()>;

    /** Taps that are further apart than `maxIntervalMilliseconds` belong to different series. */
    explicit TapButton (double maxIntervalMilliseconds, Clock clock = juce::Time::getMillisecondCounterHiRes);

    ~TapButton() override;

    /** Called by the second and each later tap of a series, with the average of its last intervals in
        milliseconds.
    */
    std::function<void (double)> onTempoTapped;

private:
    void tap();

    TapSeries series;
    const Clock getNowMilliseconds;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (TapButton)
};
} // namespace cv::varlo
