#include "lv2/Lv2Player.h"

#include <gtest/gtest.h>
#include <lv2/atom/forge.h>
#include <lv2/buf-size/buf-size.h>
#include <lv2/patch/patch.h>

namespace cv::varlo
{
namespace
{
constexpr int messageBytes = 16384;
constexpr int numChannels = 2;
constexpr auto* stateTextUri = "urn:corvane:varlo:StateString";

enum Port : uint32_t
{
    firstAudioIn = 0,
    firstAudioOut = 2,
    messageIn = 4,
    messageOut = 5,
    latencyOut = 6,
    freeWheelingIn = 7,
    enabledIn = 8
};

/** The one text that the plug-in keeps, and its numbers. */
struct KeptText
{
    LV2_URID key = 0, type = 0;
    std::string text;
};

LV2_State_Status keep (LV2_State_Handle handle, uint32_t key, const void* value, size_t size, uint32_t type, uint32_t)
{
    auto& kept = *static_cast<KeptText*> (handle);

    if (key == kept.key && type == kept.type)
        kept.text.assign (static_cast<const char*> (value), size);

    return LV2_STATE_SUCCESS;
}

const void* giveBack (LV2_State_Handle handle, uint32_t key, size_t* size, uint32_t* type, uint32_t* flags)
{
    const auto& kept = *static_cast<const KeptText*> (handle);

    if (key != kept.key)
        return nullptr;

    *size = kept.text.size();
    *type = kept.type;
    *flags = LV2_STATE_IS_POD;
    return kept.text.data();
}

juce::String toString (const LilvNode* node)
{
    return node != nullptr ? juce::String::fromUTF8 (lilv_node_as_string (node)) : juce::String();
}
} // namespace

UriNumbers::UriNumbers()
    : mapping { this, [] (auto* self, auto* uri) { return static_cast<UriNumbers*> (self)->map (uri); } }
    , unmapping { this,
                  [] (auto* self, auto number) -> const char*
                  {
                      const auto& known = static_cast<UriNumbers*> (self)->uris;
                      return number > 0 && number <= known.size() ? known[number - 1].c_str() : nullptr;
                  } }
{
}

LV2_URID UriNumbers::map (const char* uri)
{
    const auto [entry, isNew] = numbers.emplace (uri, (LV2_URID) uris.size() + 1);

    if (isNew)
        uris.emplace_back (uri);

    return entry->second;
}

Lv2World::Lv2World()
{
    // A trailing separator is a part of a bundle's name.
    const auto path = juce::File (VARLO_LV2_BUNDLE).getFullPathName() + "/";
    const std::unique_ptr<LilvNode, Free> bundle (lilv_new_file_uri (world.get(), nullptr, path.toRawUTF8()));
    lilv_world_load_bundle (world.get(), bundle.get());
    plugin = lilv_plugins_get_by_uri (lilv_world_get_all_plugins (world.get()), node ("urn:corvane:varlo"));

    if (plugin == nullptr)
        ADD_FAILURE() << "no plug-in in " << path;
    else
        lilv_world_load_resource (world.get(), lilv_plugin_get_uri (plugin));
}

const LilvNode* Lv2World::node (const char* uri)
{
    return nodes.emplace_back (lilv_new_uri (world.get(), uri)).get();
}

juce::String Lv2World::getValue (const LilvNode* subject, const char* predicate)
{
    const std::unique_ptr<LilvNode, Free> value (lilv_world_get (world.get(), subject, node (predicate), nullptr));
    return toString (value.get());
}

Lv2Player::Lv2Player (Lv2World& worldToUse, double sampleRate, int maxBlockLength)
    : world (worldToUse)
    , promisedLength (maxBlockLength)
    , messagesIn (messageBytes / sizeof (juce::int64))
    , messagesOut (messageBytes / sizeof (juce::int64))
{
    options = { { LV2_OPTIONS_INSTANCE, 0, uris.map (LV2_BUF_SIZE__maxBlockLength), sizeof (int32_t),
                  uris.map (LV2_ATOM__Int), &promisedLength },
                { LV2_OPTIONS_INSTANCE, 0, 0, 0, 0, nullptr } };
    featureValues = { { LV2_URID__map, uris.getMap() },
                      { LV2_URID__unmap, uris.getUnmap() },
                      { LV2_OPTIONS__options, options.data() },
                      { LV2_BUF_SIZE__boundedBlockLength, nullptr } };

    for (const auto& feature : featureValues)
        features.push_back (&feature);

    features.push_back (nullptr);

    if (world.getPlugin() != nullptr)
        instance = lilv_plugin_instantiate (world.getPlugin(), sampleRate, getFeatures());

    if (instance == nullptr)
    {
        ADD_FAILURE() << "no instance";
        return;
    }

    connect();
    lilv_instance_activate (instance);
}

Lv2Player::~Lv2Player()
{
    if (instance == nullptr)
        return;

    lilv_instance_deactivate (instance);
    lilv_instance_free (instance);
}

void Lv2Player::connect()
{
    auto& sequence = *reinterpret_cast<LV2_Atom_Sequence*> (messagesIn.data());
    sequence.atom = { sizeof (LV2_Atom_Sequence_Body), uris.map (LV2_ATOM__Sequence) };
    sequence.body = { 0, 0 };

    lilv_instance_connect_port (instance, messageIn, messagesIn.data());
    lilv_instance_connect_port (instance, messageOut, messagesOut.data());
    lilv_instance_connect_port (instance, latencyOut, &latency);
    lilv_instance_connect_port (instance, freeWheelingIn, &isFreeWheeling);
    lilv_instance_connect_port (instance, enabledIn, &isEnabled);
}

void Lv2Player::set (const char* parameterUri, float value)
{
    LV2_Atom_Forge forge;
    lv2_atom_forge_init (&forge, uris.getMap());

    auto& sequence = *reinterpret_cast<LV2_Atom_Sequence*> (messagesIn.data());
    const auto used = sizeof (LV2_Atom) + sequence.atom.size;
    lv2_atom_forge_set_buffer (&forge, reinterpret_cast<uint8_t*> (messagesIn.data()) + used, messageBytes - used);

    LV2_Atom_Forge_Frame frame;
    lv2_atom_forge_frame_time (&forge, 0);
    lv2_atom_forge_object (&forge, &frame, 0, uris.map (LV2_PATCH__Set));
    lv2_atom_forge_key (&forge, uris.map (LV2_PATCH__property));
    lv2_atom_forge_urid (&forge, uris.map (parameterUri));
    lv2_atom_forge_key (&forge, uris.map (LV2_PATCH__value));
    lv2_atom_forge_float (&forge, value);
    lv2_atom_forge_pop (&forge, &frame);
    sequence.atom.size += forge.offset;
}

void Lv2Player::play (juce::AudioBuffer<float>& buffer, int blockLength)
{
    output.setSize (numChannels, blockLength);
    auto& received = *reinterpret_cast<LV2_Atom*> (messagesOut.data());
    auto& sent = *reinterpret_cast<LV2_Atom_Sequence*> (messagesIn.data());

    for (auto start = 0; start < buffer.getNumSamples(); start += blockLength)
    {
        const auto length = juce::jmin (blockLength, buffer.getNumSamples() - start);
        received = { messageBytes - sizeof (LV2_Atom), uris.map (LV2_ATOM__Chunk) };

        for (auto channel = 0; channel < numChannels; ++channel)
        {
            const auto port = (uint32_t) channel;
            lilv_instance_connect_port (instance, firstAudioIn + port, buffer.getWritePointer (channel, start));
            lilv_instance_connect_port (instance, firstAudioOut + port, output.getWritePointer (channel));
        }

        lilv_instance_run (instance, (uint32_t) length);
        sent.atom.size = sizeof (LV2_Atom_Sequence_Body);

        for (auto channel = 0; channel < numChannels; ++channel)
            buffer.copyFrom (channel, start, output, channel, 0, length);
    }
}

Lv2Player::State Lv2Player::getState()
{
    State state (lilv_state_new_from_instance (world.getPlugin(), instance, uris.getMap(), nullptr, nullptr, nullptr,
                                               nullptr, nullptr, nullptr, LV2_STATE_IS_POD, getFeatures()));
    EXPECT_NE (state, nullptr);
    return state;
}

void Lv2Player::setState (const State& state)
{
    lilv_state_restore (state.get(), instance, nullptr, nullptr, 0, getFeatures());
}

const LV2_State_Interface& Lv2Player::getStateInterface() const
{
    return *static_cast<const LV2_State_Interface*> (lilv_instance_get_extension_data (instance, LV2_STATE__interface));
}

juce::MemoryBlock Lv2Player::getChunk()
{
    KeptText kept { uris.map (stateTextUri), uris.map (LV2_ATOM__String), {} };
    getStateInterface().save (instance->lv2_handle, keep, &kept, 0, getFeatures());

    juce::MemoryBlock chunk;
    EXPECT_TRUE (chunk.fromBase64Encoding (juce::String (kept.text)));
    return chunk;
}

void Lv2Player::setChunk (const juce::MemoryBlock& chunk)
{
    KeptText kept { uris.map (stateTextUri), uris.map (LV2_ATOM__String), chunk.toBase64Encoding().toStdString() };
    getStateInterface().restore (instance->lv2_handle, giveBack, &kept, 0, getFeatures());
}

Lv2Player::State Lv2Player::saveAndReload (const State& state, const juce::File& folder)
{
    EXPECT_EQ (lilv_state_save (world.get(), uris.getMap(), uris.getUnmap(), state.get(), nullptr,
                                folder.getFullPathName().toRawUTF8(), "state.ttl"),
               0);
    State read (lilv_state_new_from_file (world.get(), uris.getMap(), nullptr,
                                          folder.getChildFile ("state.ttl").getFullPathName().toRawUTF8()));
    EXPECT_NE (read, nullptr);
    return read;
}
} // namespace cv::varlo
