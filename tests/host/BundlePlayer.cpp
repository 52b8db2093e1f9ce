#include "host/BundlePlayer.h"

#include <gtest/gtest.h>
#include <pluginterfaces/base/ibstream.h>

namespace cv::varlo
{
using namespace Steinberg;

namespace
{
/** What a host hands over to have a state written or read, on the stack of whoever calls. */
class StateStream final : public IBStream
{
public:
    explicit StateStream (const juce::MemoryBlock& contentToRead = {}) : content (contentToRead) {}

    const juce::MemoryBlock& getContent() const noexcept { return content; }

    tresult PLUGIN_API read (void* buffer, int32 numBytes, int32* numRead) override
    {
        const auto length = juce::jlimit ((int64) 0, (int64) numBytes, (int64) content.getSize() - position);
        content.copyTo (buffer, (int) position, (size_t) length);
        return advance (length, numRead);
    }

    tresult PLUGIN_API write (void* buffer, int32 numBytes, int32* numWritten) override
    {
        content.ensureSize ((size_t) (position + numBytes));
        content.copyFrom (buffer, (int) position, (size_t) numBytes);
        return advance (numBytes, numWritten);
    }

    tresult PLUGIN_API seek (int64 distance, int32 mode, int64* result) override
    {
        const auto start = mode == kIBSeekSet ? 0 : mode == kIBSeekCur ? position : (int64) content.getSize();
        position = start + distance;
        return tell (result);
    }

    tresult PLUGIN_API tell (int64* result) override
    {
        if (result != nullptr)
            *result = position;

        return kResultTrue;
    }

    tresult PLUGIN_API queryInterface (const TUID, void** object) override
    {
        *object = nullptr;
        return kNoInterface;
    }

    uint32 PLUGIN_API addRef() override { return 1; }

    uint32 PLUGIN_API release() override { return 1; }

private:
    tresult advance (int64 distance, int32* result)
    {
        position += distance;

        if (result != nullptr)
            *result = (int32) distance;

        return kResultTrue;
    }

    juce::MemoryBlock content;
    int64 position = 0;
};
} // namespace

BundlePlayer::BundlePlayer()
{
    if (auto* const component = bundle.getComponent())
        component->queryInterface (Vst::IAudioProcessor_iid, reinterpret_cast<void**> (&processor));

    if (processor == nullptr)
    {
        ADD_FAILURE() << "no audio processor";
        return;
    }

    getComponent().activateBus (Vst::kAudio, Vst::kInput, 0, true);
    getComponent().activateBus (Vst::kAudio, Vst::kOutput, 0, true);
}

BundlePlayer::~BundlePlayer()
{
    if (processor != nullptr)
        processor->release();
}

tresult BundlePlayer::setUp (double sampleRate, int maxBlockLength)
{
    Vst::ProcessSetup setup { Vst::kRealtime, Vst::kSample32, maxBlockLength, sampleRate };
    return processor->setupProcessing (setup);
}

tresult BundlePlayer::setActive (bool isActive)
{
    return getComponent().setActive (isActive);
}

tresult BundlePlayer::play (float* const* input, float* const* output, int numSamples)
{
    constexpr auto numChannels = 2;
    Vst::AudioBusBuffers in, out;
    in.numChannels = out.numChannels = numChannels;
    in.channelBuffers32 = const_cast<float**> (input);
    out.channelBuffers32 = const_cast<float**> (output);

    Vst::ProcessData data;
    data.processMode = Vst::kRealtime;
    data.symbolicSampleSize = Vst::kSample32;
    data.numSamples = numSamples;
    data.numInputs = data.numOutputs = 1;
    data.inputs = &in;
    data.outputs = &out;
    return processor->process (data);
}

void BundlePlayer::play (juce::AudioBuffer<float>& buffer, int blockLength)
{
    for (auto start = 0; start < buffer.getNumSamples(); start += blockLength)
    {
        const auto length = juce::jmin (blockLength, buffer.getNumSamples() - start);
        float* const channels[] { buffer.getWritePointer (0, start), buffer.getWritePointer (1, start) };
        EXPECT_EQ (play (channels, channels, length), kResultTrue);
    }
}

juce::MemoryBlock BundlePlayer::getState() const
{
    StateStream stream;
    EXPECT_EQ (getComponent().getState (&stream), kResultTrue);
    return stream.getContent();
}

tresult BundlePlayer::setState (const juce::MemoryBlock& state)
{
    StateStream stream (state);
    return getComponent().setState (&stream);
}
} // namespace cv::varlo
