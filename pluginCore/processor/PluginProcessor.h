#pragma once

#include "processor/ProductInfo.h"

#include <juce_audio_processors/juce_audio_processors.h>
#include <juce_dsp/juce_dsp.h>

namespace cv::pluginCore
{
/** The base of every product's processor: it answers the host in all that products have in common
    and leaves the sound to a handful of virtuals.

    One input and one output bus, mono or stereo, with equal channel counts where the product agrees;
    single precision only; one program without a name; no latency of its own making.

    Threads: construction, destruction, prepareToPlay and createEditor are the host's, never at the
    same time as a block; processBlock and processBlockBypassed are the audio thread's.
*/
class PluginProcessor : public juce::AudioProcessor
{
public:
    /** Takes the product's facts and its parameters, which valueTreeState owns from here on.
        Touches no display, no file and no network: hosts and build tools construct a processor
        only to ask for its name.
    */
    PluginProcessor (ProductInfo, juce::AudioProcessorValueTreeState::ParameterLayout);

    const juce::String getName() const override;

    /** Prepares the product and the bypass path. May allocate. A rate that is not above 0 leaves the
        product's DSP as it was.
    */
    void prepareToPlay (double sampleRate, int samplesPerBlock) override;

    /** Flushes denormals and hands the block to process(). */
    void processBlock (juce::AudioBuffer<float>&, juce::MidiBuffer&) override;
    using juce::AudioProcessor::processBlock;

    /** Delays the block by the latency that the product reports, so that bypassing shifts nothing in
        time. The product's DSP rests meanwhile and goes on from the same memory afterwards. Before
        the first prepareToPlay the block is left as it is.
    */
    void processBlockBypassed (juce::AudioBuffer<float>&, juce::MidiBuffer&) override;
    using juce::AudioProcessor::processBlockBypassed;

    bool acceptsMidi() const override { return true; }

    bool producesMidi() const override { return false; }

    bool isMidiEffect() const override { return false; }

    juce::AudioProcessorEditor* createEditor() override;

    bool hasEditor() const override { return true; }

    int getNumPrograms() override { return 1; }

    int getCurrentProgram() override { return 0; }

    void setCurrentProgram (int) override {}

    /** Empty. Only under VST3, whose program lists may hold no nameless entry, the one program there is
        is called "Default".
    */
    const juce::String getProgramName (int index) override;

    void changeProgramName (int, const juce::String&) override {}

    /** Writes nothing: a project opens with the parameter values that the host itself keeps. */
    void getStateInformation (juce::MemoryBlock&) override {}

    /** Reads nothing; the sound goes on undisturbed. */
    void setStateInformation (const void*, int) override {}

    /** Where release notes and the latest version are asked for. */
    virtual juce::String getReleaseNotesUrl() const = 0;

    /** The product's page on the maker's web site. */
    virtual juce::String getProductUrl() const = 0;

    virtual int getReleaseYear() const = 0;

    /** Several lines about name, format, version and build date, for an about text. */
    virtual juce::String getVersionDisplayText() const;

    /** A product's own addition to its version text. */
    virtual juce::String getExtraVersionText() const { return {}; }

    virtual bool isBetaBuild() const { return false; }

    /** The number of a beta, 0 for none; it counts only when isBetaBuild() is true. */
    virtual int getBetaNumber() const { return 0; }

    /** "1.0.0", for a beta with " beta" behind it and a blank and the number where it has one. */
    juce::String getVersionString() const;

protected:
    /** The product's part of prepareToPlay. May allocate; ignores a rate that is not above 0. */
    virtual void prepare (double sampleRate, int samplesPerBlock) = 0;

    /** The largest latency, in samples, that the product can come to report at this rate. */
    virtual int getMaximumLatencySamples (const juce::dsp::ProcessSpec&) = 0;

    /** The product's part of processBlock, with denormals flushed to zero. Audio thread. */
    virtual void process (juce::AudioBuffer<float>&, juce::MidiBuffer&) = 0;

    juce::AudioProcessorValueTreeState valueTreeState;

private:
    using BypassDelay = juce::dsp::DelayLine<float, juce::dsp::DelayLineInterpolationTypes::None>;

    const ProductInfo productInfo;
    juce::UndoManager undoManager;

    int bypassDelayCapacity = 0;
    std::unique_ptr<BypassDelay> bypassDelay;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (PluginProcessor)
};
} // namespace cv::pluginCore
