#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

namespace cv::test
{
/** A play head that reports whatever a test puts into `position`; empty, it knows no position. */
class FakePlayHead final : public juce::AudioPlayHead
{
public:
    juce::Optional<PositionInfo> getPosition() const override { return position; }

    /** The position of a host that plays, at a tempo of 120 bpm. */
    static PositionInfo playingAt (juce::int64 timeInSamples)
    {
        PositionInfo info;
        info.setIsPlaying (true);
        info.setTimeInSamples (timeInSamples);
        info.setBpm (120.0);
        return info;
    }

    juce::Optional<PositionInfo> position;
};
} // namespace cv::test
