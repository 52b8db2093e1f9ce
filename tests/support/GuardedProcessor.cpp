#include "support/GuardedProcessor.h"

namespace cv::test
{
namespace
{
constexpr int samplesThatWakeAnalysis = 512;

/** What juce::AudioBuffer takes besides its samples, at most: a list of channels, and alignment. */
constexpr int maxExtraBytes = 128;

/** juce::AudioBuffer rounds its channels up to four samples. */
int bytesOfSamples (const juce::AudioBuffer<float>& buffer) noexcept
{
    return buffer.getNumChannels() * ((buffer.getNumSamples() + 3) / 4 * 4) * (int) sizeof (float);
}

template <typename Object>
bool isWithin (const void* place, const Object& object) noexcept
{
    const auto begin = reinterpret_cast<std::uintptr_t> (&object);
    const auto address = reinterpret_cast<std::uintptr_t> (place);
    return address >= begin && address < begin + sizeof (object);
}
} // namespace

GuardedProcessor::GuardedProcessor (varlo::AudioPluginAudioProcessor& processorToGuard) noexcept
    : processor (processorToGuard)
{
}

void GuardedProcessor::processBlock (juce::AudioBuffer<float>& buffer)
{
    prepareFor (buffer);
    const AudioThreadGuard guard ([this] (const AudioThreadCall& call) { return accepts (call); });
    processor.processBlock (buffer, midi);
}

void GuardedProcessor::processBlockBypassed (juce::AudioBuffer<float>& buffer)
{
    const AudioThreadGuard guard;
    processor.processBlockBypassed (buffer, midi);
}

void GuardedProcessor::prepareFor (const juce::AudioBuffer<float>& buffer) noexcept
{
    dryCopyBytes = bytesOfSamples (buffer);
    mayAllocate = dryCopyBytes > largestDryCopyBytes;
    mayRelease = mayAllocate;
    largestDryCopyBytes = juce::jmax (largestDryCopyBytes, dryCopyBytes);

    // Meanwhile the thread may take some of what waits now, so that this is an upper limit.
    const auto numWaiting = processor.getFFTProcessor().audioFifo.getNumReady();
    mayWakeAnalysis = numWaiting + buffer.getNumSamples() >= samplesThatWakeAnalysis;

    allocated = false;
    wokenAnalysis = false;
}

bool GuardedProcessor::accepts (const AudioThreadCall& call) noexcept
{
    switch (call.kind)
    {
        case AudioThreadCall::Kind::release:
            return call.object == dryCopy && std::exchange (mayRelease, false);

        case AudioThreadCall::Kind::allocation:
        {
            const auto extraBytes = (juce::int64) call.numBytes - dryCopyBytes;

            if (extraBytes < 0 || extraBytes > maxExtraBytes || ! std::exchange (mayAllocate, false))
                return false;

            dryCopy = call.object;
            allocated = true;
            return true;
        }

        case AudioThreadCall::Kind::wait:
            if (std::string_view (call.function) != "pthread_mutex_lock"
                || ! isWithin (call.object, processor.getFFTProcessor()) || ! std::exchange (mayWakeAnalysis, false))
                return false;

            wokenAnalysis = true;
            return true;
    }

    return false;
}
} // namespace cv::test
