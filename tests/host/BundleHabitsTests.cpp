#include "host/BundlePlayer.h"
#include "support/Signals.h"

#include <gmock/gmock.h>

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

juce::AudioBuffer<float> playAsPromised (const juce::AudioBuffer<float>& input)
{
    BundlePlayer player;
    auto buffer = input;

    if (! player.isUsable())
        return buffer;

    EXPECT_EQ (player.setUp (sampleRateHz, blockLength), kResultTrue);
    EXPECT_EQ (player.setActive (true), kResultTrue);
    player.play (buffer, blockLength);
    return buffer;
}

TEST (BundleHabits, ActivatedTwiceItSoundsAsOnce)
{
    const auto input = makeNoise (2, oneSecond, 0.5f);
    BundlePlayer player;
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
    const auto input = makeNoise (2, oneSecond, 0.5f);
    BundlePlayer player;
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
    const auto input = makeNoise (2, oneSecond / 10, 0.5f);
    BundlePlayer player;
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
    const auto input = makeNoise (2, oneSecond, 0.5f);

    for (const auto promised : { 1, 32, 500 })
    {
        BundlePlayer player;
        ASSERT_TRUE (player.isUsable());
        player.setUp (sampleRateHz, promised);
        player.setActive (true);

        auto buffer = input;
        player.play (buffer, blockLength);
        EXPECT_TRUE (areIdentical (buffer, playAsPromised (input))) << promised;
    }
}

TEST (BundleHabits, BlocksBeforeActivationAndBehindIt)
{
    BundlePlayer player;
    ASSERT_TRUE (player.isUsable());
    auto buffer = makeNoise (2, blockLength, 0.5f);
    player.play (buffer, blockLength);
    player.setUp (sampleRateHz, blockLength);
    player.play (buffer, blockLength);
    player.setActive (true);
    player.setActive (false);
    player.play (buffer, blockLength);
    EXPECT_LE (buffer.getMagnitude (0, blockLength), 4.0f);
}

TEST (BundleHabits, OutputAndInputMayBeTheSameOrNot)
{
    const auto input = makeNoise (2, oneSecond, 0.5f);
    BundlePlayer player;
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
    BundlePlayer player;
    ASSERT_TRUE (player.isUsable());
    player.setUp (sampleRateHz, blockLength);
    player.setActive (true);
    auto buffer = makeNoise (1, oneSecond, 0.5f);

    for (auto start = 0; start + blockLength <= oneSecond; start += blockLength)
    {
        auto* const samples = buffer.getWritePointer (0, start);
        float* const channels[] { samples, samples };
        EXPECT_EQ (player.play (channels, channels, blockLength), kResultTrue);
    }

    EXPECT_LE (buffer.getMagnitude (0, oneSecond), 4.0f);
    EXPECT_GT (buffer.getMagnitude (0, oneSecond), 0.1f);
}

TEST (BundleHabits, StateAtAnyTime)
{
    constexpr auto samplesPerMillisecond = 48;
    const auto input = makeNoise (2, oneSecond, 0.5f);
    BundlePlayer player;
    ASSERT_TRUE (player.isUsable());
    const auto state = player.getState();
    ASSERT_FALSE (state.isEmpty());
    EXPECT_EQ (player.setState (state), kResultTrue);
    player.setUp (sampleRateHz, blockLength);
    EXPECT_EQ (player.setState (state), kResultTrue);
    player.setActive (true);
    auto buffer = input;

    for (auto start = 0; start < oneSecond; start += samplesPerMillisecond)
    {
        float* const channels[] { buffer.getWritePointer (0, start), buffer.getWritePointer (1, start) };
        player.setState (state);
        player.play (channels, channels, samplesPerMillisecond);
    }

    EXPECT_TRUE (areIdentical (buffer, playAsPromised (input)));
    EXPECT_EQ (player.getState(), state);
}

// The C library keeps what has symbols that are to be unique in a process, so that the code stays. What the plug-in
// has made goes all the same when its last instance does, and is made anew for the next.
TEST (BundleHabits, LeftAndLoadedAgain)
{
    const auto input = makeNoise (2, oneSecond / 10, 0.5f);
    const auto expected = playAsPromised (input);

    for (auto i = 0; i < 10; ++i)
        EXPECT_TRUE (areIdentical (playAsPromised (input), expected)) << i;
}
} // namespace
} // namespace cv::varlo
