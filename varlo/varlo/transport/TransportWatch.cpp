#include "varlo/transport/TransportWatch.h"

namespace cv::varlo
{
bool TransportWatch::hasJumped (int numSamples, const juce::PluginHostType& host) noexcept
{
    largestBlockSeen = juce::jmax (largestBlockSeen, numSamples);

    const auto* playHead = processor.getPlayHead();

    if (playHead == nullptr)
        return false;

    const auto position = playHead->getPosition();

    if (! position.hasValue() || ! position->getIsPlaying() || ! position->getTimeInSamples().hasValue())
        return false;

    previousTimeInSamples = lastTimeInSamples;
    lastTimeInSamples = *position->getTimeInSamples();

    if (const auto bpm = position->getBpm(); bpm.hasValue())
    {
        previousBpm = lastBpm;
        lastBpm = *bpm;
    }

    const auto delta = lastTimeInSamples - previousTimeInSamples;
    const auto limit = 2 * (juce::int64) largestBlockSeen;
    const auto isJump = delta > limit || (! position->getIsLooping() && delta < -limit);

    return isJump && (! host.isAbletonLive() || juce::approximatelyEqual (lastBpm, previousBpm));
}
} // namespace cv::varlo
