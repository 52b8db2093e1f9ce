#include "host/BundlePlayer.h"
#include "support/Signals.h"

#include <gmock/gmock.h>
#include <juce_audio_processors/juce_audio_processors.h>

namespace cv::varlo
{
namespace
{
using namespace Steinberg;
using test::areIdentical;
using test::makeNoise;

constexpr auto sampleRateHz = 48000.0;
constexpr auto oneSecond = 48000;
constexpr auto blockLength = 512;

/** The plug-in lets nothing louder through. */
constexpr auto maxLevel = 4.0f;

juce::MemoryBlock makeState (const std::map<juce::String, float>& values)
{
    juce::XmlElement state ("Varlo");
    auto* const parameters = state.createNewChildElement ("PARAMS");

    for (const auto& [id, value] : values)
    {
        auto* const parameter = parameters->createNewChildElement ("PARAM");
        parameter->setAttribute ("id", id);
        parameter->setAttribute ("value", value);
    }

    juce::MemoryBlock chunk;
    juce::AudioProcessor::copyXmlToBinary (state, chunk);
    return chunk;
}

/** Every stage at work, with much feedback and echoes that are soon heard. */
juce::MemoryBlock makeEchoingState()
{
    return makeState ({ { "delay", 37.0f }, { "feedback", 95.0f }, { "degrade", 40.0f }, { "resonance", 60.0f } });
}

/** The built bundle with short echoes, before anybody has told it of a rate. */
class EchoingPlayer final : public BundlePlayer
{
public:
    EchoingPlayer() { EXPECT_TRUE (! isUsable() || setState (makeEchoingState()) == kResultTrue); }
};

/** Noise, and silence in the last quarter. */
juce::AudioBuffer<float> makeBurst (int numChannels, int numSamples)
{
    auto buffer = makeNoise (numChannels, numSamples, 0.5f);
    buffer.clear (numSamples * 3 / 4, numSamples - numSamples * 3 / 4);
    return buffer;
}

/** What is heard in the silence behind a burst. */
float getEchoLevel (const juce::AudioBuffer<float>& buffer)
{
    const auto start = buffer.getNumSamples() * 3 / 4;
    return buffer.getMagnitude (start, buffer.getNumSamples() - start);
}

/** Plays a burst with short echoes as hosts should. */
juce::AudioBuffer<float> playAsPromised (const juce::AudioBuffer<float>& burst)
{
    EchoingPlayer player;
    auto buffer = burst;

    if (! player.isUsable())
        return buffer;

    EXPECT_EQ (player.setUp (sampleRateHz, blockLength), kResultTrue);
    EXPECT_EQ (player.setActive (true), kResultTrue);
    player.play (buffer, blockLength);
    EXPECT_GT (getEchoLevel (buffer), 0.1f);
    return buffer;
}

TEST (BundleHabits, ActivatedTwiceItSoundsAsOnce)
{
    const auto input = makeBurst (2, oneSecond);
    EchoingPlayer player;
    ASSERT_TRUE (player.isUsable());
    player.setUp (sampleRateHz, blockLength);
    player.setActive (true);
    player.setActive (true);
    player.setUp (sampleRateHz, blockLength);
    player.setActive (true);

    auto buffer = input;
    player.play (buffer, blockLength);
    EXPECT_TRUE (areIdentical (buffer, playAsPromised (input)));
}

TEST (BundleHabits, SetUpForNothingThenForARateItPlays)
{
    const auto input = makeBurst (2, oneSecond);
    EchoingPlayer player;
    ASSERT_TRUE (player.isUsable());
    player.setUp (0.0, 0);
    player.setActive (true);
    player.setActive (false);
    player.setUp (96000.0, 0);
    player.setActive (true);
    player.setActive (false);
    player.setUp (sampleRateHz, blockLength);
    player.setActive (true);

    auto buffer = input;
    player.play (buffer, blockLength);
    EXPECT_TRUE (areIdentical (buffer, playAsPromised (input)));
}

TEST (BundleHabits, BlocksOfNoneOrOneSample)
{
    const auto input = makeBurst (2, oneSecond / 10);
    EchoingPlayer player;
    ASSERT_TRUE (player.isUsable());
    player.setUp (sampleRateHz, blockLength);
    player.setActive (true);
    auto buffer = input;

    for (auto i = 0; i < buffer.getNumSamples(); ++i)
    {
        float* const channels[] { buffer.getWritePointer (0, i), buffer.getWritePointer (1, i) };
        float* const nowhere[] { nullptr, nullptr };
        player.play (nowhere, nowhere, 0);
        player.play (channels, channels, 0);
        player.play (channels, channels, 1);
    }

    EXPECT_TRUE (areIdentical (buffer, playAsPromised (input)));
}

TEST (BundleHabits, BlocksLargerThanPromised)
{
    const auto input = makeBurst (2, oneSecond);

    for (const auto promised : { 1, 32, 500 })
    {
        EchoingPlayer player;
        ASSERT_TRUE (player.isUsable());
        player.setUp (sampleRateHz, promised);
        player.setActive (true);

        auto buffer = input;
        player.play (buffer, blockLength);
        EXPECT_TRUE (areIdentical (buffer, playAsPromised (input))) << promised;
    }
}

TEST (BundleHabits, BlocksBeforeActivationAreSilent)
{
    const auto input = makeBurst (2, oneSecond / 10);
    EchoingPlayer player;
    ASSERT_TRUE (player.isUsable());
    auto buffer = input;
    player.play (buffer, blockLength);
    EXPECT_FLOAT_EQ (buffer.getMagnitude (0, buffer.getNumSamples()), 0.0f);

    player.setUp (sampleRateHz, blockLength);
    buffer = input;
    player.play (buffer, blockLength);
    EXPECT_FLOAT_EQ (buffer.getMagnitude (0, buffer.getNumSamples()), 0.0f);

    // And leave nothing behind.
    player.setActive (true);
    buffer = input;
    player.play (buffer, blockLength);
    EXPECT_TRUE (areIdentical (buffer, playAsPromised (input)));
}

TEST (BundleHabits, BlocksBehindDeactivationGoOn)
{
    const auto input = makeBurst (2, oneSecond);
    EchoingPlayer player;
    ASSERT_TRUE (player.isUsable());
    player.setUp (sampleRateHz, blockLength);
    player.setActive (true);
    auto buffer = input;

    for (auto start = 0; start < oneSecond; start += blockLength)
    {
        if (start >= oneSecond / 2)
            player.setActive (false);

        float* const channels[] { buffer.getWritePointer (0, start), buffer.getWritePointer (1, start) };
        EXPECT_EQ (player.play (channels, channels, juce::jmin (blockLength, oneSecond - start)), kResultTrue);
    }

    EXPECT_TRUE (areIdentical (buffer, playAsPromised (input)));
}

TEST (BundleHabits, OutputAndInputMayBeTheSameOrNot)
{
    const auto input = makeBurst (2, oneSecond);
    EchoingPlayer player;
    ASSERT_TRUE (player.isUsable());
    player.setUp (sampleRateHz, blockLength);
    player.setActive (true);
    juce::AudioBuffer<float> output (2, oneSecond);
    auto source = input;

    for (auto start = 0; start < oneSecond; start += blockLength)
    {
        float* const in[] { source.getWritePointer (0, start), source.getWritePointer (1, start) };
        float* const out[] { output.getWritePointer (0, start), output.getWritePointer (1, start) };
        player.play (in, out, juce::jmin (blockLength, oneSecond - start));
    }

    EXPECT_TRUE (areIdentical (output, playAsPromised (input)));
    EXPECT_TRUE (areIdentical (source, input));
}

TEST (BundleHabits, BothChannelsMayBeTheSame)
{
    EchoingPlayer player;
    ASSERT_TRUE (player.isUsable());
    player.setUp (sampleRateHz, blockLength);
    player.setActive (true);
    auto buffer = makeBurst (1, oneSecond);

    for (auto start = 0; start + blockLength <= oneSecond; start += blockLength)
    {
        auto* const samples = buffer.getWritePointer (0, start);
        float* const channels[] { samples, samples };
        EXPECT_EQ (player.play (channels, channels, blockLength), kResultTrue);
    }

    EXPECT_LE (buffer.getMagnitude (0, oneSecond), maxLevel);
    EXPECT_GT (getEchoLevel (buffer), 0.1f);
}

TEST (BundleHabits, StateAtAnyTime)
{
    constexpr auto samplesPerMillisecond = 48;
    const auto input = makeBurst (2, oneSecond);
    EchoingPlayer player;
    ASSERT_TRUE (player.isUsable());

    // As the plug-in writes them.
    const auto echoing = player.getState();
    EXPECT_EQ (player.setState (makeState ({ { "delay", 800.0f }, { "mix", 20.0f } })), kResultTrue);
    const auto other = player.getState();
    ASSERT_NE (other, echoing);

    player.setUp (sampleRateHz, blockLength);
    EXPECT_EQ (player.setState (echoing), kResultTrue);
    EXPECT_EQ (player.getState(), echoing);
    player.setActive (true);
    auto buffer = input;

    for (auto start = 0; start < oneSecond; start += samplesPerMillisecond)
    {
        // What stood in between is never heard.
        EXPECT_EQ (player.setState (other), kResultTrue);
        ASSERT_EQ (player.getState(), other) << start;
        EXPECT_EQ (player.setState (echoing), kResultTrue);
        ASSERT_EQ (player.getState(), echoing) << start;

        float* const channels[] { buffer.getWritePointer (0, start), buffer.getWritePointer (1, start) };
        player.play (channels, channels, samplesPerMillisecond);
    }

    EXPECT_TRUE (areIdentical (buffer, playAsPromised (input)));
}

TEST (BundleHabits, AStateIsHeardFromTheNextBlockOn)
{
    const auto input = makeBurst (2, oneSecond);
    EchoingPlayer player;
    ASSERT_TRUE (player.isUsable());
    const auto echoing = player.getState();
    player.setState (makeState ({ { "mix", 0.0f } }));
    player.setUp (sampleRateHz, blockLength);
    player.setActive (true);

    auto buffer = input;
    player.play (buffer, blockLength);
    EXPECT_LT (getEchoLevel (buffer), 0.01f);

    player.setState (echoing);
    buffer = input;
    player.play (buffer, blockLength);
    EXPECT_GT (getEchoLevel (buffer), 0.1f);
}

// The C library keeps what has symbols that are to be unique in a process, so that the code stays. What the plug-in
// has made goes all the same when its last instance does, and is made anew for the next.
TEST (BundleHabits, LeftAndLoadedAgain)
{
    const auto input = makeBurst (2, oneSecond / 10);
    const auto expected = playAsPromised (input);

    for (auto i = 0; i < 10; ++i)
        EXPECT_TRUE (areIdentical (playAsPromised (input), expected)) << i;
}
} // namespace
} // namespace cv::varlo
