#pragma once

#include "support/AudioThreadGuard.h"
#include "varlo/AudioPluginAudioProcessor.h"

namespace cv::test
{
/** Runs a processor's blocks under the AudioThreadGuard, with the one exception that the design makes: the
    analysis thread is woken. One lock of a mutex within it passes, in a block after which at least 512 samples
    can be waiting for it. All else fails the test.
*/
class GuardedProcessor
{
public:
    explicit GuardedProcessor (varlo::AudioPluginAudioProcessor&) noexcept;

    void processBlock (juce::AudioBuffer<float>&);

    /** Without any exception. */
    void processBlockBypassed (juce::AudioBuffer<float>&);

    /** Whether the last block has used the exception. */
    bool hasWokenAnalysis() const noexcept { return wokenAnalysis; }

private:
    void prepareFor (const juce::AudioBuffer<float>&) noexcept;
    bool accepts (const AudioThreadCall&) noexcept;

    varlo::AudioPluginAudioProcessor& processor;
    juce::MidiBuffer midi;

    bool mayWakeAnalysis = false, wokenAnalysis = false;

    JUCE_DECLARE_NON_COPYABLE (GuardedProcessor)
};
} // namespace cv::test
