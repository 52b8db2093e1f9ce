#include "varlo/dsp/ChannelRamps.h"

#include <gmock/gmock.h>

namespace cv::varlo
{
namespace
{
TEST (ChannelRamps, GiveWhatARampForEachChannelGives)
{
    juce::Random random (1);
    ChannelRamps ramps (20.0f);
    std::array expected { juce::SmoothedValue<float> (20.0f), juce::SmoothedValue<float> (20.0f) };

    for (int run = 0; run < 20000; ++run)
    {
        if (random.nextInt (1000) == 0)
        {
            const auto rate = std::array { 44100.0, 96000.0, 50.0 }[(size_t) random.nextInt (3)];
            ramps.reset (rate, 0.01);

            for (auto& ramp : expected)
                ramp.reset (rate, 0.01);
        }

        if (random.nextInt (5) == 0)
        {
            const auto target = random.nextInt (4) == 0 ? 5000.0f : 20000.0f * random.nextFloat();
            ramps.setTarget (target);

            for (auto& ramp : expected)
                ramp.setTargetValue (target);
        }

        // Long stretches of mono and of stereo.
        const auto numChannels = 1 + run / 50 % 2;
        const auto numFrames = 1 + random.nextInt (200);
        std::vector<float> left ((size_t) numFrames), right ((size_t) numFrames);

        ASSERT_EQ (ramps.isMoving (1), expected[0].isSmoothing());
        ASSERT_TRUE (ramps.isMoving (2) || (! expected[0].isSmoothing() && ! expected[1].isSmoothing()));
        ASSERT_EQ (ramps.getTarget(), expected[0].getTargetValue());

        const auto differ = ramps.fill (left.data(), right.data(), numFrames, numChannels);

        for (size_t i = 0; i < left.size(); ++i)
        {
            ASSERT_EQ (left[i], expected[0].getNextValue()) << run << ", " << i;

            if (numChannels == 2)
            {
                ASSERT_EQ (differ ? right[i] : left[i], expected[1].getNextValue()) << run << ", " << i;
            }
        }
    }
}
} // namespace
} // namespace cv::varlo
