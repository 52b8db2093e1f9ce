#include "host/BundlePlayer.h"
#include "lv2/Lv2Player.h"
#include "support/ScratchFolder.h"
#include "support/Signals.h"

#include <gmock/gmock.h>
#include <juce_audio_processors/juce_audio_processors.h>

namespace cv::varlo
{
namespace
{
using test::areIdentical;
using test::makeNoise;

constexpr auto sampleRateHz = 48000.0;
constexpr auto oneSecond = 48000;
constexpr auto blockLength = 512;

const juce::String plugInUri ("urn:corvane:varlo");

struct ParameterRow
{
    const char* id;
    const char* name;
    const char* unit;
    float start, least, most;

    /** Neither the start nor an end. */
    float another;
};

// Hosts keep automation under these names: never change them.
constexpr ParameterRow parameterRows[] {
    { "mix", "Mix", "pc", 50.0f, 0.0f, 100.0f, 62.5f },
    { "degrade", "Degrade", "pc", 0.0f, 0.0f, 100.0f, 37.5f },
    { "delay", "Delay", "ms", 1000.0f, 1.0f, 10000.0f, 125.0f },
    { "feedback", "Feedback", "pc", 50.0f, 0.0f, 100.0f, 75.0f },
    { "lowpass", "Lowpass", "hz", 5000.0f, 20.0f, 20000.0f, 2000.0f },
    { "resonance", "Resonance", "pc", 0.0f, 0.0f, 100.0f, 25.0f },
};

juce::String uriOf (const ParameterRow& row)
{
    return plugInUri + ":" + row.id;
}

/** The LV2 bundle as hosts find and play it, at 48 kHz in blocks of 512. */
class Lv2Bundle : public ::testing::Test
{
protected:
    void SetUp() override { ASSERT_NE (world.getPlugin(), nullptr); }

    static void setAll (Lv2Player& player)
    {
        for (const auto& row : parameterRows)
            player.set (uriOf (row).toRawUTF8(), row.another);
    }

    /** False with a failure of the test if the VST3 bundle can't be played. */
    static bool start (BundlePlayer& player)
    {
        return player.isUsable() && player.setUp (sampleRateHz, blockLength) == Steinberg::kResultTrue
               && player.setActive (true) == Steinberg::kResultTrue;
    }

    Lv2World world;

    // Long enough for an echo at the parameters' start.
    const juce::AudioBuffer<float> noise = makeNoise (2, 2 * oneSecond, 0.5f);
};

TEST_F (Lv2Bundle, TellsHostsWhatItIs)
{
    const std::unique_ptr<LilvNode, decltype (&lilv_node_free)> name (lilv_plugin_get_name (world.getPlugin()),
                                                                      lilv_node_free);
    EXPECT_STREQ (lilv_node_as_string (name.get()), "Varlo");

    const auto* const itself = world.node (plugInUri.toRawUTF8());
    EXPECT_TRUE (lilv_world_ask (world.get(), itself, world.node ("http://www.w3.org/1999/02/22-rdf-syntax-ns#type"),
                                 world.node ("http://lv2plug.in/ns/lv2core#DelayPlugin")));
    EXPECT_EQ (world.getValue (itself, "http://usefulinc.com/ns/doap#license"),
               "https://www.gnu.org/licenses/agpl-3.0.html");
    EXPECT_EQ (lilv_plugin_get_num_ports (world.getPlugin()), 9u);

    // Nothing in it takes MIDI, and there are no presets in the bundle.
    auto* const presets =
        lilv_plugin_get_related (world.getPlugin(), world.node ("http://lv2plug.in/ns/ext/presets#Preset"));
    EXPECT_EQ (lilv_nodes_size (presets), 0u);
    lilv_nodes_free (presets);

    for (auto port = 0u; port < 9; ++port)
        EXPECT_FALSE (lilv_port_supports_event (world.getPlugin(),
                                                lilv_plugin_get_port_by_index (world.getPlugin(), port),
                                                world.node ("http://lv2plug.in/ns/ext/midi#MidiEvent")));
}

TEST_F (Lv2Bundle, HasTheSixParameters)
{
    auto* const writable = lilv_world_find_nodes (world.get(), world.node (plugInUri.toRawUTF8()),
                                                  world.node ("http://lv2plug.in/ns/ext/patch#writable"), nullptr);
    EXPECT_EQ (lilv_nodes_size (writable), std::size (parameterRows));

    for (const auto& row : parameterRows)
    {
        const auto* const parameter = world.node (uriOf (row).toRawUTF8());
        const juce::String core ("http://lv2plug.in/ns/lv2core#");
        EXPECT_TRUE (lilv_nodes_contains (writable, parameter)) << row.id;
        EXPECT_EQ (world.getValue (parameter, "http://www.w3.org/2000/01/rdf-schema#label"), row.name);
        EXPECT_EQ (world.getValue (parameter, "http://lv2plug.in/ns/extensions/units#unit"),
                   juce::String ("http://lv2plug.in/ns/extensions/units#") + row.unit);
        EXPECT_EQ (world.getValue (parameter, (core + "default").toRawUTF8()).getFloatValue(), row.start);
        EXPECT_EQ (world.getValue (parameter, (core + "minimum").toRawUTF8()).getFloatValue(), row.least);
        EXPECT_EQ (world.getValue (parameter, (core + "maximum").toRawUTF8()).getFloatValue(), row.most);
    }

    lilv_nodes_free (writable);
}

TEST_F (Lv2Bundle, SoundsAsTheVst3BundleDoes)
{
    Lv2Player player (world, sampleRateHz, blockLength);
    BundlePlayer vst3;
    ASSERT_TRUE (player.isUsable() && start (vst3));

    auto expected = noise, actual = noise;
    vst3.play (expected, blockLength);
    player.play (actual, blockLength);
    EXPECT_TRUE (areIdentical (actual, expected));
    EXPECT_EQ (player.getLatency(), 0.0f);
}

TEST_F (Lv2Bundle, SharesItsStateWithTheVst3Bundle)
{
    Lv2Player source (world, sampleRateHz, blockLength), player (world, sampleRateHz, blockLength);
    BundlePlayer vst3;
    ASSERT_TRUE (source.isUsable() && player.isUsable() && start (vst3));

    auto atStart = noise, expected = noise, actual = noise;
    source.play (atStart, blockLength);
    setAll (source);
    source.play (actual, blockLength);
    ASSERT_EQ (vst3.setState (source.getChunk()), Steinberg::kResultTrue);
    player.setChunk (vst3.getState());

    actual = noise;
    vst3.play (expected, blockLength);
    player.play (actual, blockLength);
    EXPECT_TRUE (areIdentical (actual, expected));
    EXPECT_FALSE (areIdentical (actual, atStart));
}

TEST_F (Lv2Bundle, ValuesOutliveSavingAndReloading)
{
    const test::ScratchFolder scratch;
    Lv2Player player (world, sampleRateHz, blockLength);
    ASSERT_TRUE (player.isUsable());
    auto buffer = noise;
    setAll (player);
    player.play (buffer, blockLength);

    const auto state = player.getState();
    const auto reloaded = player.saveAndReload (state, scratch.getFile ("project.lv2"));
    Lv2Player other (world, sampleRateHz, blockLength);
    ASSERT_TRUE (other.isUsable());
    EXPECT_NE (other.getChunk(), player.getChunk());

    other.setState (reloaded);
    EXPECT_EQ (other.getChunk(), player.getChunk());

    const auto chunk = other.getChunk();
    const auto xml = juce::AudioProcessor::getXmlFromBinary (chunk.getData(), (int) chunk.getSize());
    ASSERT_NE (xml, nullptr);
    const auto* const values = xml->getChildByName ("PARAMS");
    ASSERT_NE (values, nullptr);

    for (const auto& row : parameterRows)
    {
        const auto* const value = values->getChildByAttribute ("id", row.id);
        ASSERT_NE (value, nullptr) << row.id;

        // It went through the parameter's range from 0 to 1.
        EXPECT_FLOAT_EQ ((float) value->getDoubleAttribute ("value"), row.another) << row.id;
    }
}

TEST_F (Lv2Bundle, StandsBlocksLargerThanPromised)
{
    Lv2Player asPromised (world, sampleRateHz, blockLength), beyond (world, sampleRateHz, 32);
    ASSERT_TRUE (asPromised.isUsable() && beyond.isUsable());
    auto expected = noise, actual = noise;
    asPromised.play (expected, blockLength);
    beyond.play (actual, blockLength);
    EXPECT_TRUE (areIdentical (actual, expected));
}
} // namespace
} // namespace cv::varlo
