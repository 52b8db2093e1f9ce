#pragma once

#include "host/LoadedBundle.h"

#include <juce_audio_basics/juce_audio_basics.h>
#include <pluginterfaces/vst/ivstaudioprocessor.h>

namespace cv::varlo
{
/** The built bundle's component played through the plug-in interfaces alone, in whichever order of calls. */
class BundlePlayer
{
public:
    BundlePlayer();
    ~BundlePlayer();

    /** False, with a failure of the test, when the bundle has no audio processor; nothing else may be called then. */
    bool isUsable() const noexcept { return processor != nullptr; }

    Steinberg::Vst::IComponent& getComponent() const noexcept { return *bundle.getComponent(); }

    /** Promises a rate in Hz and a largest block. */
    Steinberg::tresult setUp (double sampleRate, int maxBlockLength);

    Steinberg::tresult setActive (bool);

    /** A stereo block; input and output may be the same, or have the same memory for both channels. */
    Steinberg::tresult play (float* const* input, float* const* output, int numSamples);

    /** Plays the buffer's content in blocks, and puts the output in its place. */
    void play (juce::AudioBuffer<float>&, int blockLength);

    /** The component's state, as a project keeps it. */
    juce::MemoryBlock getState() const;
    Steinberg::tresult setState (const juce::MemoryBlock&);

private:
    const LoadedBundle bundle;
    Steinberg::Vst::IAudioProcessor* processor = nullptr;

    JUCE_DECLARE_NON_COPYABLE (BundlePlayer)
};
} // namespace cv::varlo
