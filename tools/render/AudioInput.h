#pragma once

#include "InputFileStream.h"
#include "RateConverter.h"

#include <juce_audio_formats/juce_audio_formats.h>

#include <memory>
#include <optional>
#include <vector>

namespace cv::render
{
/** A WAV, AIFF or FLAC file, recognised by its content, as a stream of mono or stereo audio at the rate
    to render at. One thread.
*/
class AudioInput
{
public:
    /** Opens the file. With a rate, in Hz, it converts to that one; with mixToMono the channels become
        their mean. Throws RenderError for a file that can't be read, has no samples, more than two
        channels, or a rate that can't be rendered at.
    */
    AudioInput (const juce::File&, std::optional<int> sampleRate, bool mixToMono);

    /** 1 or 2. */
    int getNumChannels() const noexcept { return numChannels; }

    /** In Hz, after conversion. */
    int getSampleRate() const noexcept { return sampleRate; }

    /** In samples, after conversion. */
    juce::int64 getLength() const noexcept { return length; }

    /** Fills the first channels of the buffer with what comes next, zeros behind the end. Throws
        RenderError when the file holds less than it announces.
    */
    void read (juce::AudioBuffer<float>&);

private:
    void openReader (const juce::File&);
    void checkReader (const juce::File&) const;
    void readChunk();
    void convertChunk();
    long interleaveChunk (float*& data);
    void readFromFile (juce::AudioBuffer<float>&);

    static constexpr int chunkLength = 4096;

    std::unique_ptr<juce::AudioFormatReader> reader;
    InputFileStream* source = nullptr;
    int numChannels;
    int sampleRate;
    juce::int64 length;
    juce::int64 filePosition = 0;
    bool readFailed = false;

    juce::AudioBuffer<float> fileChunk;
    juce::AudioBuffer<float> chunk;
    int chunkPosition = chunkLength;

    std::vector<float> interleavedInput;
    std::vector<float> interleavedOutput;
    std::unique_ptr<RateConverter> converter;
};
} // namespace cv::render
