#include "AudioOutput.h"

#include "RenderError.h"

#include <array>

namespace cv::render
{
namespace
{
int toBits (SampleFormat format)
{
    switch (format)
    {
        case SampleFormat::integer16:
            return 16;
        case SampleFormat::integer24:
            return 24;
        case SampleFormat::float32:
            return 32;
    }

    return 0;
}
} // namespace

/** What a format's writer takes for its own: it goes to the file, which outlives the writer, and its
    end tells how long the file has to be once all is on the disk.
*/
class AudioOutput::Stream final : public juce::OutputStream
{
public:
    explicit Stream (AudioOutput& o) : owner (o) {}

    void flush() override { owner.file->flush(); }

    bool setPosition (juce::int64 position) override { return owner.file->setPosition (position); }

    juce::int64 getPosition() override { return owner.file->getPosition(); }

    bool write (const void* data, size_t numBytes) override
    {
        owner.endPosition = juce::jmax (owner.endPosition, owner.file->getPosition() + (juce::int64) numBytes);
        return owner.file->write (data, numBytes);
    }

private:
    AudioOutput& owner;
};

AudioOutput::AudioOutput (const juce::File& targetFile, int channels, int sampleRate, SampleFormat format)
    : target (targetFile)
    , numChannels (channels)
    , sampleFormat (format)
    , temporary (target)
    , integers ((size_t) channels)
{
    TemporaryOutput::checkTarget (target);
    file.emplace (temporary.getFile());

    if (file->failedToOpen())
        throw RenderError ("can't write " + target.getFullPathName() + ": " + file->getStatus().getErrorMessage());

    const auto isFlac = target.hasFileExtension ("flac");
    const auto audioFormat = isFlac ? std::unique_ptr<juce::AudioFormat> (std::make_unique<juce::FlacAudioFormat>())
                                    : std::make_unique<juce::WavAudioFormat>();

    auto stream = std::make_unique<Stream> (*this);
    constexpr auto defaultCompression = 5;
    writer.reset (audioFormat->createWriterFor (stream.get(), sampleRate, (unsigned int) numChannels,
                                                toBits (sampleFormat), {}, defaultCompression));

    if (writer == nullptr)
        throw RenderError (audioFormat->getFormatName() + " can't hold " + juce::String (sampleRate) + " Hz");

    // The writer has it now.
    juce::ignoreUnused (stream.release());
}

void AudioOutput::write (const juce::AudioBuffer<float>& buffer, int start, int numSamples)
{
    if (sampleFormat != SampleFormat::float32)
        writeIntegers (buffer, start, numSamples);
    else if (! writer->writeFromAudioSampleBuffer (buffer, start, numSamples))
        throwWriteError();
}

void AudioOutput::writeIntegers (const juce::AudioBuffer<float>& buffer, int start, int numSamples)
{
    // The writers take 32 bits with the sample in the upper ones, and drop the rest: round before.
    const auto unusedBits = 32 - toBits (sampleFormat);
    const auto fullScale = std::ldexp (1.0, toBits (sampleFormat) - 1);

    // One pointer more than there are channels: the writers look for a null at the end.
    std::array<const int*, 3> pointers {};

    for (auto channel = 0; channel < numChannels; ++channel)
    {
        auto& converted = integers[(size_t) channel];
        converted.resize ((size_t) juce::jmax ((int) converted.size(), numSamples));
        const auto* const samples = buffer.getReadPointer (channel, start);

        for (auto i = 0; i < numSamples; ++i)
        {
            const auto sample = std::isnan (samples[i]) ? 0.0f : samples[i];
            const auto magnitude = std::abs (sample);

            peak = juce::jmax (peak, magnitude);
            numClipped += magnitude > 1.0f ? 1 : 0;

            const auto scaled = juce::jlimit (-fullScale, fullScale - 1.0, std::round (sample * fullScale));
            converted[(size_t) i] = (int) scaled * (1 << unusedBits);
        }

        pointers[(size_t) channel] = converted.data();
    }

    if (! writer->write (pointers.data(), numSamples))
        throwWriteError();
}

void AudioOutput::commit()
{
    // The writer's last words are its header and, for FLAC, its last frame.
    writer.reset();
    file->flush();

    if (file->getStatus().failed() || temporary.getFile().getSize() != endPosition)
        throwWriteError();

    file.reset();
    temporary.commit();
}

void AudioOutput::throwWriteError() const
{
    const auto reason = file->getStatus().failed() ? file->getStatus().getErrorMessage() : "the disk is full";
    throw RenderError ("can't write " + target.getFullPathName() + ": " + reason);
}
} // namespace cv::render
