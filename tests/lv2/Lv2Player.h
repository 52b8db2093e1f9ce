#pragma once

#include <juce_audio_basics/juce_audio_basics.h>

#include <lilv/lilv.h>
#include <lv2/atom/atom.h>
#include <lv2/options/options.h>
#include <lv2/state/state.h>
#include <lv2/urid/urid.h>

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace cv::varlo
{
/** Numbers for URIs, from 1 on, as hosts give them out. */
class UriNumbers
{
public:
    UriNumbers();

    LV2_URID map (const char* uri);

    LV2_URID_Map* getMap() noexcept { return &mapping; }

    LV2_URID_Unmap* getUnmap() noexcept { return &unmapping; }

private:
    std::map<std::string, LV2_URID> numbers;
    std::vector<std::string> uris;
    LV2_URID_Map mapping;
    LV2_URID_Unmap unmapping;

    JUCE_DECLARE_NON_COPYABLE (UriNumbers)
};

/** The built LV2 bundle in a world where there is nothing else. */
class Lv2World
{
public:
    Lv2World();

    /** The plug-in, null with a failure of the test if the bundle holds none. */
    const LilvPlugin* getPlugin() const noexcept { return plugin; }

    LilvWorld* get() const noexcept { return world.get(); }

    /** The node of a URI, for as long as this object lives. */
    const LilvNode* node (const char* uri);

    /** What the descriptions say of a thing, "" for nothing. */
    juce::String getValue (const LilvNode* subject, const char* predicate);

private:
    struct Free
    {
        void operator() (LilvWorld* w) const { lilv_world_free (w); }

        void operator() (LilvNode* n) const { lilv_node_free (n); }
    };

    const std::unique_ptr<LilvWorld, Free> world { lilv_world_new() };
    std::vector<std::unique_ptr<LilvNode, Free>> nodes;
    const LilvPlugin* plugin = nullptr;
};

/** An instance of the built LV2 bundle, played as a host plays it. */
class Lv2Player
{
public:
    /** Promises a rate in Hz and a largest block. */
    Lv2Player (Lv2World&, double sampleRate, int maxBlockLength);
    ~Lv2Player();

    /** False when the bundle did not give an instance; nothing else may be called then. */
    bool isUsable() const noexcept { return instance != nullptr; }

    /** Has the next block set a parameter, in its own unit. */
    void set (const char* parameterUri, float value);

    /** Plays stereo sound in blocks and puts the output in its place. */
    void play (juce::AudioBuffer<float>&, int blockLength);

    /** The latency that the last block told, in samples. */
    float getLatency() const noexcept { return latency; }

    /** What a host's project or a preset holds, lilv's. */
    struct StateFree
    {
        void operator() (LilvState* state) const { lilv_state_free (state); }
    };

    using State = std::unique_ptr<LilvState, StateFree>;

    State getState();
    void setState (const State&);

    /** Writes a state into a folder that need not exist and reads it from there. */
    State saveAndReload (const State&, const juce::File& folder);

    /** What the plug-in gives of itself for its state: the same as the VST3 bundle's. */
    juce::MemoryBlock getChunk();
    void setChunk (const juce::MemoryBlock&);

    LilvInstance* getInstance() const noexcept { return instance; }

    UriNumbers& getUriNumbers() noexcept { return uris; }

private:
    void connect();
    const LV2_State_Interface& getStateInterface() const;

    const LV2_Feature* const* getFeatures() const noexcept { return features.data(); }

    Lv2World& world;
    UriNumbers uris;
    const int32_t promisedLength;
    std::vector<LV2_Options_Option> options;
    std::vector<LV2_Feature> featureValues;
    std::vector<const LV2_Feature*> features;
    LilvInstance* instance = nullptr;

    // Aligned as atoms have to be.
    std::vector<juce::int64> messagesIn, messagesOut;
    juce::AudioBuffer<float> input, output;
    float latency = -1.0f, isFreeWheeling = 0.0f, isEnabled = 1.0f;

    JUCE_DECLARE_NON_COPYABLE (Lv2Player)
};
} // namespace cv::varlo
