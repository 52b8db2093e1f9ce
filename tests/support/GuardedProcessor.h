#pragma once

#include "AudioPluginAudioProcessor.h"
#include "support/AudioThreadGuard.h"

namespace cv::test
{
/** Runs a processor's blocks under the AudioThreadGuard, with the two exceptions that the design makes:

    - The copy of the dry signal is made in the first block and in each that is longer than all before.
      There, one allocation of that size passes, and the release of the copy made before.
    - The analysis thread is woken. One lock of a mutex within it passes, in a block after which at least
      512 samples can be waiting for it.

    All else fails the test. To be made before the processor's first block.
*/
class GuardedProcessor
{
public:
    explicit GuardedProcessor (varlo::AudioPluginAudioProcessor&) noexcept;

    void processBlock (juce::AudioBuffer<float>&);

    /** Without any exception. */
    void processBlockBypassed (juce::AudioBuffer<float>&);

    /** Which exceptions the last block has used. */
    bool hasAllocated() const noexcept { return allocated; }

    bool hasWokenAnalysis() const noexcept { return wokenAnalysis; }

private:
    void prepareFor (const juce::AudioBuffer<float>&) noexcept;
    bool accepts (const AudioThreadCall&) noexcept;

    varlo::AudioPluginAudioProcessor& processor;
    juce::MidiBuffer midi;

    const void* dryCopy = nullptr;
    int largestDryCopyBytes = -1;

    int dryCopyBytes = 0;
    bool mayAllocate = false, allocated = false;
    bool mayRelease = false;
    bool mayWakeAnalysis = false, wokenAnalysis = false;

    JUCE_DECLARE_NON_COPYABLE (GuardedProcessor)
};
} // namespace cv::test
