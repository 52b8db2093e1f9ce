#include "ProgressLine.h"

#include "StandardStreams.h"

#include <iostream>

namespace cv::render
{
ProgressLine::ProgressLine (bool quiet) : isShown (! quiet && isErrorStreamATerminal()) {}

ProgressLine::~ProgressLine()
{
    constexpr auto eraseLine = "\r\x1b[K";

    if (isShown)
        std::cerr << eraseLine << std::flush;
}

void ProgressLine::update (double fraction)
{
    constexpr juce::uint32 intervalMilliseconds = 100;

    if (! isShown)
        return;

    const auto now = juce::Time::getMillisecondCounter();

    if (now - lastUpdateMilliseconds < intervalMilliseconds)
        return;

    lastUpdateMilliseconds = now;
    std::cerr << "\rrendering: " << juce::roundToInt (fraction * 100.0) << " %" << std::flush;
}
} // namespace cv::render
