#pragma once

#include "pluginCore/localisation/LocalisedStringsManager.h"
#include "pluginCore/presets/PresetsManager.h"
#include "pluginCore/product/ProductInfo.h"
#include "pluginCore/sharing/PluginGlobalSettings.h"

#include <juce_audio_processors/juce_audio_processors.h>
#include <juce_dsp/juce_dsp.h>

namespace cv::pluginCore
{
class PluginEditor;

/** The base of every product's processor: it answers the host in all that products have in common
    and leaves the sound to a handful of virtuals.

    One input and one output bus, mono or stereo, with equal channel counts where the product agrees;
    single precision only; one program without a name; no latency of its own making.

    It owns what makes up a project's state: the parameters, two trees for whatever else a product
    remembers (dataTree travels with presets and projects, settingsTree with projects only), the current
    preset, the editor's size and the list of locked parameters, which presets leave alone.

    Threads: construction, destruction, prepareToPlay and createEditor are the host's, never at the
    same time as a block; processBlock and processBlockBypassed are the audio thread's. State calls come on
    any thread but that, also while it runs. They are not guarded against each other, nor against the
    message thread's preset loads: parameters have a lock of their own, the rest follows the last caller.
*/
class PluginProcessor : public juce::AudioProcessor,
                        public juce::AudioProcessorValueTreeState::Listener,
                        public PresetsManager::Owner
{
public:
    /** Fills one of the trees that a product remembers things in. */
    using TreeHook = std::function<void (juce::ValueTree&)>;

    /** Takes the product's facts, its parameters, which valueTreeState owns from here on, and its preset
        folders. The hooks may be empty; they get dataTree and settingsTree once all else is there. From here on
        all texts of this process are translated into the system's language.

        Creates preset folders and reads the settings file, but touches no display and no network: hosts and
        build tools construct a processor only to ask for its name.
    */
    PluginProcessor (ProductInfo,
                     juce::AudioProcessorValueTreeState::ParameterLayout,
                     const PresetLocations&,
                     const TreeHook& dataTreeHook = {},
                     const TreeHook& settingsTreeHook = {});

    ~PluginProcessor() override;

    /** Starts listening to the parameters. To be called once, right after construction. */
    virtual void initialise();

    const juce::String getName() const override;

    /** Prepares the product and the bypass path. May allocate. A rate that is not above 0 leaves the
        product's DSP as it was.
    */
    void prepareToPlay (double sampleRate, int samplesPerBlock) override;

    /** Flushes denormals, calls reset() if a state or a preset has been applied since the last block, and
        hands the block to process(). A block that comes before any prepareToPlay with a rate above 0 is cleared.
    */
    void processBlock (juce::AudioBuffer<float>&, juce::MidiBuffer&) override;
    using juce::AudioProcessor::processBlock;

    /** Delays the block by the latency that the product reports, so that bypassing shifts nothing in
        time. The product's DSP rests meanwhile and goes on from the same memory afterwards. A block
        that comes before the first prepareToPlay is cleared.
    */
    void processBlockBypassed (juce::AudioBuffer<float>&, juce::MidiBuffer&) override;
    using juce::AudioProcessor::processBlockBypassed;

    bool acceptsMidi() const override { return true; }

    bool producesMidi() const override { return false; }

    bool isMidiEffect() const override { return false; }

    /** Makes the product's editor and has it take its remembered size and ask for updates. */
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

    /** Writes the state as a project keeps it. */
    void getStateInformation (juce::MemoryBlock&) override;

    /** Brings a project's state back. What is no state changes nothing, and the sound goes on undisturbed.
        Locked parameters keep their values; only afterwards is the list of them replaced.
    */
    void setStateInformation (const void* data, int sizeInBytes) override;

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

    /** The state as an element named after the product: version, parameters, what dataTree holds and, for
        a project, editor size and settingsTree. Any thread but the audio thread.
    */
    std::unique_ptr<juce::XmlElement> createStateXml (bool includeEditorState) override;

    /** Applies such an element, from whatever version. Another product's changes nothing; what it lacks of
        parameters or trees stays as it is. Without includeEditorState, editor size and settingsTree
        stay. Any thread but the audio thread.
    */
    void restoreStateXml (const juce::XmlElement&, bool includeEditorState) override;

    /** Gets what is about to be merged into dataTree; a product may convert it. */
    virtual void dataTreeRestored (juce::ValueTree) {}

    /** The same for settingsTree. */
    virtual void settingsTreeRestored (juce::ValueTree) {}

    /** An element named after the product that says whose and which version it is. */
    virtual std::unique_ptr<juce::XmlElement> createIdentityXml();

    /** Marks the preset as changed, whichever parameter moved. Any thread, lock-free. */
    void parameterChanged (const juce::String& parameterId, float newValue) override;

    const ProductInfo& getProductInfo() const noexcept override { return productInfo; }

    juce::AudioProcessorValueTreeState& getValueTreeState() noexcept { return valueTreeState; }

    juce::UndoManager& getUndoManager() noexcept { return undoManager; }

    PresetsManager& getPresetsManager() noexcept { return presetsManager; }

    PluginGlobalSettings& getGlobalSettings() noexcept { return globalSettings; }

    /** The editor's last size in logical pixels, -1 where none is remembered. Any thread. */
    int getEditorWidth() const noexcept { return editorWidth; }

    int getEditorHeight() const noexcept { return editorHeight; }

    /** Remembers the editor's size for the project. */
    void setEditorSize (int width, int height) noexcept;

protected:
    /** A new editor, owned by the caller. Message thread. */
    virtual PluginEditor* createPluginEditor() = 0;

    /** The product's part of prepareToPlay. May allocate; ignores a rate that is not above 0. */
    virtual void prepare (double sampleRate, int samplesPerBlock) = 0;

    /** The largest latency, in samples, that the product can come to report at this rate. */
    virtual int getMaximumLatencySamples (const juce::dsp::ProcessSpec&) = 0;

    /** The product's part of processBlock, with denormals flushed to zero. Audio thread. */
    virtual void process (juce::AudioBuffer<float>&, juce::MidiBuffer&) = 0;

    juce::AudioProcessorValueTreeState valueTreeState;

    /** What a product remembers beside its parameters, in presets and projects. Its type is "Data". */
    juce::ValueTree dataTree { "Data" };

    /** What a product remembers in projects only. Its type is "Settings". */
    juce::ValueTree settingsTree { "Settings" };

private:
    /** The name of the state's element: the product's, without what an XML name can't hold. */
    juce::String getStateElementName() const;

    void restoreProjectXml (const juce::XmlElement&);
    void restoreParameters (const juce::XmlElement& stateXml);
    void replaceLockedParameters (const juce::String& ids);

    using BypassDelay = juce::dsp::DelayLine<float, juce::dsp::DelayLineInterpolationTypes::None>;

    const ProductInfo productInfo;
    LocalisedStringsManager localisedStrings;
    PluginGlobalSettings globalSettings;
    juce::UndoManager undoManager;
    PresetsManager presetsManager;

    std::atomic<int> editorWidth { -1 };
    std::atomic<int> editorHeight { -1 };
    juce::StringArray lockedParameterIds;

    /** Raised by whatever replaces the state, taken by the next block. */
    std::atomic<bool> resetPending { false };

    /** True once the product was given a rate to prepare for; from then on it can process. */
    bool isPrepared = false;

    int bypassDelayCapacity = 0;
    std::unique_ptr<BypassDelay> bypassDelay;

    /** True while a project's state is brought back. */
    std::atomic<bool> restoringState { false };

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (PluginProcessor)
};
} // namespace cv::pluginCore
