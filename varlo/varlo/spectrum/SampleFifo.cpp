#include "varlo/spectrum/SampleFifo.h"

namespace cv::varlo
{
namespace
{
void write (const float* source, std::atomic<float>* destination, int count) noexcept
{
    for (int i = 0; i < count; ++i)
        destination[i].store (source[i], std::memory_order_relaxed);
}

void read (const std::atomic<float>* source, float* destination, int count) noexcept
{
    for (int i = 0; i < count; ++i)
        destination[i] = source[i].load (std::memory_order_relaxed);
}
} // namespace

SampleFifo::SampleFifo (int capacity) : fifo (capacity), samples ((size_t) capacity)
{
    jassert (capacity >= 2);
}

void SampleFifo::pushOverwriting (const float* data, int count) noexcept
{
    const auto numTooMany = juce::jmax (0, count - (fifo.getTotalSize() - 1));
    data += numTooMany;
    count -= numTooMany;

    if (const auto numReady = fifo.getNumReady(); fifo.getTotalSize() - 1 - numReady < count)
        fifo.finishedRead (juce::jmin (count, numReady));

    int start1 = 0, size1 = 0, start2 = 0, size2 = 0;
    fifo.prepareToWrite (count, start1, size1, start2, size2);

    write (data, samples.data() + start1, size1);
    write (data + size1, samples.data() + start2, size2);

    fifo.finishedWrite (size1 + size2);
}

void SampleFifo::pushMeanOverwriting (const juce::AudioBuffer<float>& audio) noexcept
{
    const auto numChannels = audio.getNumChannels();

    if (numChannels == 1)
        pushOverwriting (audio.getReadPointer (0), audio.getNumSamples());

    if (numChannels < 2)
        return;

    // Piece by piece, so that a block of any length needs no memory of its own.
    constexpr int pieceLength = 512;
    std::array<float, pieceLength> mean;

    for (int start = 0; start < audio.getNumSamples(); start += pieceLength)
    {
        const auto length = juce::jmin (pieceLength, audio.getNumSamples() - start);
        juce::FloatVectorOperations::add (mean.data(), audio.getReadPointer (0, start), audio.getReadPointer (1, start),
                                          length);

        for (int channel = 2; channel < numChannels; ++channel)
            juce::FloatVectorOperations::add (mean.data(), audio.getReadPointer (channel, start), length);

        juce::FloatVectorOperations::multiply (mean.data(), 1.0f / (float) numChannels, length);
        pushOverwriting (mean.data(), length);
    }
}

bool SampleFifo::pop (float* destination, int count) noexcept
{
    int start1 = 0, size1 = 0, start2 = 0, size2 = 0;
    fifo.prepareToRead (count, start1, size1, start2, size2);

    // The writer may have moved both indices between the two looks at them.
    if (size1 + size2 != count)
        return false;

    read (samples.data() + start1, destination, size1);
    read (samples.data() + start2, destination + size1, size2);

    fifo.finishedRead (count);
    return true;
}

void SampleFifo::dropAll() noexcept
{
    fifo.finishedRead (fifo.getNumReady());
}
} // namespace cv::varlo
