#include "AudioInput.h"

#include "CommandLine.h"
#include "RenderError.h"

#include <filesystem>

namespace cv::render
{
namespace
{
bool canRenderAt (double rateHz)
{
    return rateHz >= CommandLine::minSampleRateHz && rateHz <= CommandLine::maxSampleRateHz;
}

bool isCompressed (const juce::AudioFormatReader& reader)
{
    return reader.getFormatName() == juce::FlacAudioFormat().getFormatName();
}

template <typename Sample>
void interleave (const juce::AudioBuffer<Sample>& from, Sample* to)
{
    const auto numChannels = from.getNumChannels();

    for (auto channel = 0; channel < numChannels; ++channel)
        for (auto i = 0; i < from.getNumSamples(); ++i)
            to[i * numChannels + channel] = from.getSample (channel, i);
}

template <typename Sample>
void deinterleave (const Sample* from, juce::AudioBuffer<Sample>& to)
{
    const auto numChannels = to.getNumChannels();

    for (auto channel = 0; channel < numChannels; ++channel)
        for (auto i = 0; i < to.getNumSamples(); ++i)
            to.setSample (channel, i, from[i * numChannels + channel]);
}
} // namespace

AudioInput::AudioInput (const juce::File& file, std::optional<int> wantedRate, bool mixToMono)
{
    openReader (file);
    checkReader (file);

    const auto fileChannels = (int) reader->numChannels;
    numChannels = mixToMono ? 1 : fileChannels;
    sampleRate = wantedRate.value_or (juce::roundToInt (reader->sampleRate));
    length = reader->lengthInSamples;

    if (! canRenderAt (sampleRate))
        throw RenderError ("can't render at the input's rate of " + juce::String (sampleRate)
                           + " Hz; choose another one with --rate");

    fileChunk.setSize (fileChannels, chunkLength);
    chunk.setSize (numChannels, chunkLength);

    if (juce::approximatelyEqual ((double) sampleRate, reader->sampleRate))
        return;

    const auto ratio = sampleRate / reader->sampleRate;
    length = juce::jmax ((juce::int64) 1, (juce::int64) std::llround ((double) length * ratio));
    interleavedInput.resize ((size_t) (chunkLength * numChannels));
    interleavedOutput.resize (interleavedInput.size());
    converter =
        std::make_unique<RateConverter> (numChannels, ratio, [this] (float*& data) { return interleaveChunk (data); });
}

void AudioInput::openReader (const juce::File& file)
{
    const auto path = file.getFullPathName();

    if (! file.exists())
        throw RenderError ("no such file: " + path);

    if (file.isDirectory())
        throw RenderError ("is a folder, not an audio file: " + path);

    // A pipe or a device can't be read twice, as recognising a format needs.
    if (std::error_code error; ! std::filesystem::is_regular_file (path.toStdString(), error))
        throw RenderError ("not a regular file: " + path);

    auto stream = std::make_unique<InputFileStream> (file);

    if (stream->getStatus().failed())
        throw RenderError ("can't read " + path + ": " + stream->getStatus().getErrorMessage());

    stream->correct (findWavSizeCorrections (*stream));
    stream->setPosition (0);

    juce::AudioFormatManager formats;
    formats.registerFormat (new juce::WavAudioFormat(), true);
    formats.registerFormat (new juce::AiffAudioFormat(), false);
    formats.registerFormat (new juce::FlacAudioFormat(), false);

    // The reader owns the stream from here on.
    source = stream.get();
    reader.reset (formats.createReaderFor (std::move (stream)));

    if (reader == nullptr)
        throw RenderError ("not a WAV, AIFF or FLAC file: " + path);

    source->startWatching();
}

void AudioInput::checkReader (const juce::File& file) const
{
    const auto path = file.getFullPathName();

    if (reader->lengthInSamples <= 0)
        throw RenderError ("no audio in " + path);

    if (reader->numChannels < 1 || reader->numChannels > 2)
        throw RenderError ("mono or stereo is needed; " + path + " has " + juce::String (reader->numChannels)
                           + " channels");

    if (! isCompressed (*reader) && (reader->bitsPerSample % 8 != 0 || reader->bitsPerSample > 32))
        throw RenderError ("can't read samples of " + juce::String (reader->bitsPerSample) + " bits: " + path);
}

void AudioInput::read (juce::AudioBuffer<float>& destination)
{
    for (auto done = 0; done < destination.getNumSamples();)
    {
        if (chunkPosition == chunkLength)
            readChunk();

        const auto count = juce::jmin (chunkLength - chunkPosition, destination.getNumSamples() - done);

        for (auto channel = 0; channel < numChannels; ++channel)
            destination.copyFrom (channel, done, chunk, channel, chunkPosition, count);

        chunkPosition += count;
        done += count;
    }
}

void AudioInput::readChunk()
{
    if (converter != nullptr)
        convertChunk();
    else
        readFromFile (chunk);

    chunkPosition = 0;

    if (readFailed)
        throw RenderError ("the input file is damaged or cut short");
}

void AudioInput::convertChunk()
{
    converter->read (interleavedOutput.data(), chunkLength);
    deinterleave (interleavedOutput.data(), chunk);
}

long AudioInput::interleaveChunk (float*& data)
{
    const auto remaining = reader->lengthInSamples - filePosition;

    if (remaining <= 0)
        return 0;

    // The converter is done with its last input when it asks for more, so `chunk` is free here.
    readFromFile (chunk);
    interleave (chunk, interleavedInput.data());
    data = interleavedInput.data();
    return (long) juce::jmin ((juce::int64) chunkLength, remaining);
}

void AudioInput::readFromFile (juce::AudioBuffer<float>& destination)
{
    // Behind the end the reader gives zeros.
    auto& target = fileChunk.getNumChannels() == numChannels ? destination : fileChunk;
    readFailed |= ! reader->read (&target, 0, chunkLength, filePosition, true, true);
    readFailed |= isCompressed (*reader) ? source->wasAskedBehindEnd() : source->hadShortRead();
    filePosition += chunkLength;

    if (&target == &destination)
        return;

    destination.copyFrom (0, 0, fileChunk, 0, 0, chunkLength);
    destination.addFrom (0, 0, fileChunk, 1, 0, chunkLength);
    destination.applyGain (0.5f);
}
} // namespace cv::render
