#include "support/Signals.h"
#include "varlo/dsp/DelayMemory.h"

#include <gmock/gmock.h>
#include <juce_dsp/juce_dsp.h>

namespace cv::varlo
{
namespace
{
using cv::test::noise;

/** The memory frame by frame, as the line of JUCE's that it takes the place of is used. */
class FrameByFrame
{
public:
    explicit FrameByFrame (int maxDelay) { memory.prepare (maxDelay); }

    Frame writeAndRead (Frame input, int delay)
    {
        *memory.getWritePosition() = input;
        const auto run = memory.read (delay, 1);
        const auto alone = memory.readFrame (delay, 0);
        EXPECT_EQ (run.length, 1);
        EXPECT_EQ (run.frames->left(), alone.left());
        EXPECT_EQ (run.frames->right(), alone.right());
        memory.finishWrite (1);
        return alone;
    }

    DelayMemory memory;
};

TEST (DelayMemory, GivesWhatJucesDelayLineGives)
{
    juce::Random random (1);

    for (const auto maxDelay : { 0, 1, 2, 3, 100, 1000 })
    {
        FrameByFrame memory (maxDelay);
        juce::dsp::DelayLine<float, juce::dsp::DelayLineInterpolationTypes::None> line (maxDelay);
        line.prepare ({ 44100.0, 512, 2 });
        ASSERT_EQ (memory.memory.getMaxDelay(), line.getMaximumDelayInSamples());

        for (int i = 0; i < 20000; ++i)
        {
            if (random.nextInt (2000) == 0)
            {
                memory.memory.clear();
                line.reset();
            }

            const Frame input (random.nextFloat(), random.nextFloat());
            const auto delay = random.nextInt (line.getMaximumDelayInSamples() + 1);
            line.pushSample (0, input.left());
            line.pushSample (1, input.right());
            const auto output = memory.writeAndRead (input, delay);
            ASSERT_EQ (output.left(), line.popSample (0, (float) delay)) << maxDelay << ", sample " << i;
            ASSERT_EQ (output.right(), line.popSample (1, (float) delay)) << maxDelay << ", sample " << i;
        }
    }
}

TEST (DelayMemory, RunsHoldWhatSingleReadsGive)
{
    juce::Random random (2);
    DelayMemory memory;
    memory.prepare (300);
    FrameByFrame single (300);

    for (int block = 0; block < 20000; ++block)
    {
        if (random.nextInt (50) == 0)
        {
            memory.clear();
            single.memory.clear();
        }

        const auto delay = random.nextInt (301);
        const auto maxLength = juce::jmin (1 + random.nextInt (200), memory.getRoomInARow());
        const auto input = noise (maxLength, block);
        *memory.getWritePosition() = Frame (input[0], -input[0]);

        const auto run = memory.read (delay, maxLength);
        ASSERT_GE (run.length, 1);
        ASSERT_LE (run.length, maxLength);
        ASSERT_LE (run.length, delay + 1);

        for (int i = 0; i < run.length; ++i)
        {
            const auto value = input[(size_t) i];
            memory.getWritePosition()[i] = Frame (value, -value);
            const auto expected = single.writeAndRead (Frame (value, -value), delay);
            ASSERT_EQ (run.frames[i].left(), expected.left()) << "block " << block << ", frame " << i;
            ASSERT_EQ (run.frames[i].right(), expected.right()) << "block " << block << ", frame " << i;
        }

        memory.finishWrite (run.length);
    }
}

TEST (DelayMemory, FramesAreReadAheadUpToTheDelay)
{
    DelayMemory memory;
    memory.prepare (10);

    for (int i = 0; i < 4; ++i)
        memory.getWritePosition()[i] = Frame ((float) i + 1.0f);

    memory.finishWrite (4);
    *memory.getWritePosition() = Frame (5.0f);

    for (int offset = 0; offset <= 3; ++offset)
        EXPECT_EQ (memory.readFrame (3, offset).left(), (float) offset + 2.0f);
}

TEST (DelayMemory, NewSizeEmptiesIt)
{
    FrameByFrame memory (10);
    memory.writeAndRead (Frame (1.0f), 0);
    memory.memory.prepare (20);
    EXPECT_EQ (memory.memory.getMaxDelay(), 20);

    for (int delay = 1; delay <= 20; ++delay)
        EXPECT_EQ (memory.memory.readFrame (delay, 0).left(), 0.0f) << delay;
}

TEST (DelayMemory, IsEmptiedWithoutTouchingWhatItHolds)
{
    // What costs time when it is emptied is writing to ten seconds of it; so nothing of it may have changed.
    DelayMemory memory;
    memory.prepare (100);
    auto* start = memory.getWritePosition();
    start[0] = Frame (1.0f);
    memory.finishWrite (1);
    memory.clear();
    EXPECT_EQ (memory.getWritePosition(), start);
    EXPECT_EQ (start->left(), 1.0f);
    EXPECT_EQ (memory.readFrame (1, 0).left(), 0.0f);
}
} // namespace
} // namespace cv::varlo
