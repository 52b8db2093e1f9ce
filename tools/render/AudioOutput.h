#pragma once

#include "CommandLine.h"
#include "TemporaryOutput.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <memory>
#include <optional>
#include <vector>

namespace cv::render
{
/** A WAV or FLAC file in the making, by the extension of its name. Everything goes to a temporary file
    beside it, which takes its place in commit() and vanishes without it. One thread.
*/
class AudioOutput
{
public:
    /** Opens the temporary file. Throws RenderError when that fails or the target can't be written, or when a
        FLAC file can't have the rate, in Hz.
    */
    AudioOutput (const juce::File& target, int numChannels, int sampleRate, SampleFormat);

    /** Appends the buffer's first channels from `start` on. An integer format limits to full scale, 1.0,
        and writes what is no number as 0. Throws RenderError when it can't be written.
    */
    void write (const juce::AudioBuffer<float>&, int start, int numSamples);

    /** Closes the file and puts it in its place. Throws RenderError when either fails. Call once, last. */
    void commit();

    /** How many samples an integer format had to limit; 0 for floating point. */
    juce::int64 getNumClippedSamples() const noexcept { return numClipped; }

    /** The largest magnitude that was written; only integer formats look for it. */
    float getPeak() const noexcept { return peak; }

private:
    class Stream;

    void writeIntegers (const juce::AudioBuffer<float>&, int start, int numSamples);
    [[noreturn]] void throwWriteError() const;

    juce::File target;
    int numChannels;
    SampleFormat sampleFormat;

    TemporaryOutput temporary;
    std::optional<juce::FileOutputStream> file;
    juce::int64 endPosition = 0;
    std::unique_ptr<juce::AudioFormatWriter> writer;

    std::vector<std::vector<int>> integers;
    juce::int64 numClipped = 0;
    float peak = 0.0f;
};
} // namespace cv::render
