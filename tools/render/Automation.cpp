#include "Automation.h"

#include <algorithm>

namespace cv::render
{
Automation::Automation (const ParameterText& text, const std::vector<Breakpoint>& breakpoints)
    : parameter (text.getParameter())
    , isStepped (text.isStepped())
{
    for (const auto& breakpoint : breakpoints)
        points.push_back ({ breakpoint.seconds, text.toNormalised (breakpoint.value) });
}

void Automation::applyAt (double seconds)
{
    const auto value = getValueAt (seconds);

    if (lastValue && juce::exactlyEqual (*lastValue, value))
        return;

    lastValue = value;
    parameter.setValue (value);
}

float Automation::getValueAt (double seconds) const
{
    const auto after = std::upper_bound (points.begin(), points.end(), seconds,
                                         [] (double time, const Point& point) { return time < point.seconds; });

    if (after == points.begin())
        return points.front().normalised;

    const auto& before = *std::prev (after);

    if (after == points.end() || isStepped)
        return before.normalised;

    const auto fraction = (seconds - before.seconds) / (after->seconds - before.seconds);
    return (float) juce::jmap (fraction, (double) before.normalised, (double) after->normalised);
}
} // namespace cv::render
