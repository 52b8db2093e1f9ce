#include "support/GuardedProcessor.h"

namespace cv::test
{
namespace
{
constexpr int samplesThatWakeAnalysis = 512;

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
    // Meanwhile the thread may take some of what waits now, so that this is an upper limit.
    const auto numWaiting = processor.getFFTProcessor().audioFifo.getNumReady();
    mayWakeAnalysis = numWaiting + buffer.getNumSamples() >= samplesThatWakeAnalysis;
    wokenAnalysis = false;
}

bool GuardedProcessor::accepts (const AudioThreadCall& call) noexcept
{
    if (call.kind != AudioThreadCall::Kind::wait || std::string_view (call.function) != "pthread_mutex_lock"
        || ! isWithin (call.object, processor.getFFTProcessor()) || ! std::exchange (mayWakeAnalysis, false))
        return false;

    wokenAnalysis = true;
    return true;
}
} // namespace cv::test
