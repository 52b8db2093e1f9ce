#pragma once

#include "varlo/dsp/DegradeStage.h"
#include "varlo/dsp/DelayMemory.h"
#include "varlo/dsp/FeedbackLadder.h"
#include "varlo/dsp/FeedbackLimiter.h"
#include "varlo/dsp/Frame.h"
#include "varlo/dsp/ParameterValues.h"
#include "varlo/dsp/WetLowpass.h"

#include <juce_audio_basics/juce_audio_basics.h>

#include <array>

namespace cv::varlo
{
/** The whole sound of the product, for one or two channels that never meet:

        delayed  = delay memory, written with input + loop gain * fed back
        fed back = limiter (ladder (delayed)), one sample later
        wet      = low-pass (Degrade (delayed))
        output   = guard (wet * wet gain + input * dry gain)

    The memory is read without interpolation, so the delay moves in whole samples. A new delay time
    glides there in a straight line of half a second, heard as a change of pitch.

    A block is worked on in segments no longer than the delay. All that such a segment reads of the memory
    has been written before it begins, so its delayed frames lie ready as one run, and Degrade works on
    that run. What depends on the sample before it, ladder, limiter and low-pass, goes through one loop for
    both channels at once: the three recursions hide each other's waiting.

    Threads: prepare() never at the same time as the others, which are the audio thread's and
    allocate nothing.
*/
class DelayEngine
{
public:
    static constexpr int maxDelaySeconds = 10;
    static constexpr double mixRampSeconds = 0.005;
    static constexpr double delayRampSeconds = 0.5;
    static constexpr double loopGainRampSeconds = 1.0;

    /** Prepares all stages for a rate in hertz, above 0, and empties the delay memory. What waits to be fed
        back stays, if it is finite. Allocates where the rate has changed.
    */
    void prepare (double sampleRate, const ParameterValues&);

    /** Sets the targets of all ramps. Degrade alone has none: it changes at once. */
    void setParameters (const ParameterValues&) noexcept;

    /** Empties delay memory, filters and the limiter's envelope, which costs next to nothing. Ramps, the held
        samples of Degrade and the samples that wait to be fed back stay, these if they are finite.
    */
    void clear() noexcept;

    /** Works in place on one or two channels; of further ones only the dry signal is left. The number of channels
        changes with a prepare() in between. prepare() has to have been called.
    */
    void process (juce::AudioBuffer<float>&) noexcept;

private:
    struct Gains
    {
        Frame loop, dry, wet;
    };

    /** The settings of the frames of a part; only those of the first one are there while they rest. */
    struct Settings
    {
        bool filtersMove = false;
        bool gainsMove = false;
        bool delayMoves = false;
        std::array<FeedbackLadder::Coefficients, maxPartLength> ladder {};
        std::array<WetLowpass::Coefficients, maxPartLength> lowpass {};
        std::array<Gains, maxPartLength> gains {};
        std::array<int, maxPartLength> delays {}; // whole samples

        const Gains& getGains (int index) const noexcept { return gains[gainsMove ? (size_t) index : 0]; }
    };

    /** Where a part of a block comes from and goes to. */
    struct Channels
    {
        const float* inputLeft;
        const float* inputRight;
        float* outputLeft;
        float* outputRight;

        Frame getInput (int index) const noexcept { return { inputLeft[index], inputRight[index] }; }

        void setOutput (int index, Frame frame) const noexcept
        {
            outputLeft[index] = frame.left();
            outputRight[index] = frame.right();
        }
    };

    Channels getChannels (juce::AudioBuffer<float>&, int start) noexcept;
    void processPart (juce::AudioBuffer<float>&, int start, int numFrames) noexcept;

    void updateSettings (int numFrames, int numChannels) noexcept;
    void updateDelays (int numFrames) noexcept;

    /** The frames at a delay that moves, gathered into a run of at least 1 and at most `maxLength`. */
    DelayMemory::Run readGliding (int offset, int maxLength) noexcept;

    const Frame* degradeRun (DelayMemory::Run delayed, int numChannels) noexcept;

    template <bool filtersMove, bool gainsMove>
    void runLoop (const Channels&, int offset, DelayMemory::Run delayed, const Frame* degraded) noexcept;

    double sampleRate = 0.0;
    float delaySeconds = 0.0f;
    juce::SmoothedValue<float> delay; // samples
    juce::SmoothedValue<float> loopGain;
    juce::SmoothedValue<float> dryGain;
    juce::SmoothedValue<float> wetGain;

    DelayMemory memory;
    FeedbackLadder ladder;
    FeedbackLimiter limiter;
    DegradeStage degrade;
    WetLowpass lowpass;
    Frame feedbackSample; // conditioned, and waiting to be fed back

    // For the part of a block that is being worked on.
    Settings settings;
    std::array<Frame, maxPartLength> delayedFrames {};
    std::array<Frame, maxPartLength> degradedFrames {};
    std::array<float, maxPartLength> unusedOutput {};
};
} // namespace cv::varlo
