#pragma once

#include <juce_audio_processors/juce_audio_processors.h>

namespace cv::render
{
/** A transport that plays a song in 4/4 at 120 beats per minute from its start, without a loop. */
class PlayHead final : public juce::AudioPlayHead
{
public:
    /** The rate, in Hz, is above 0. */
    explicit PlayHead (double rate) : sampleRate (rate) {}

    void advance (int numSamples) noexcept { position += numSamples; }

    juce::Optional<PositionInfo> getPosition() const override
    {
        const auto seconds = (double) position / sampleRate;
        const auto beats = seconds * beatsPerMinute / 60.0;

        PositionInfo info;
        info.setTimeInSamples (position);
        info.setTimeInSeconds (seconds);
        info.setBpm (beatsPerMinute);
        info.setTimeSignature (TimeSignature { beatsPerBar, 4 });
        info.setPpqPosition (beats);
        info.setPpqPositionOfLastBarStart (std::floor (beats / beatsPerBar) * beatsPerBar);
        info.setIsPlaying (true);
        return info;
    }

private:
    static constexpr double beatsPerMinute = 120.0;
    static constexpr int beatsPerBar = 4;

    double sampleRate;
    juce::int64 position = 0;
};
} // namespace cv::render
