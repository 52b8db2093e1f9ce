#include "varlo/editor/EditorLayout.h"

#include <gtest/gtest.h>

#include <random>

namespace cv::varlo
{
namespace
{
using Area = juce::Rectangle<int>;

std::vector<Area> getAreas (const EditorLayout& layout)
{
    std::vector<Area> areas { layout.header, layout.spectrogram, layout.tapButton, layout.led };
    areas.insert (areas.end(), layout.knobs.begin(), layout.knobs.end());
    return areas;
}

TEST (EditorLayoutTest, FollowsTheWorkedSizes)
{
    const auto layout = layOutEditor (1050, 578);
    EXPECT_EQ (layout.header, Area (0, 0, 1050, 69));
    EXPECT_EQ (layout.spectrogram, Area (28, 69, 994, 342));
    EXPECT_EQ (layout.tapButton, Area (48, 464, 69, 34));
    EXPECT_EQ (layout.led, Area (76, 508, 13, 13));
    EXPECT_EQ (layout.knobs[0], Area (136, 432, 130, 139));
    EXPECT_EQ (layout.knobs[1], Area (266, 432, 130, 139));
    EXPECT_EQ (layout.knobs[2], Area (428, 432, 130, 139));
    EXPECT_EQ (layout.knobs[3], Area (590, 432, 130, 139));
    EXPECT_EQ (layout.knobs[4], Area (720, 432, 130, 139));
    EXPECT_EQ (layout.knobs[5], Area (882, 432, 130, 139));
}

TEST (EditorLayoutTest, FollowsTheSameRulesWhenSmall)
{
    const auto layout = layOutEditor (100, 100);
    EXPECT_EQ (layout.header, Area (0, 0, 100, 12));
    EXPECT_EQ (layout.spectrogram, Area (5, 12, 90, 59));
    EXPECT_EQ (layout.tapButton, Area (8, 80, 12, 6));
    EXPECT_EQ (layout.led, Area (13, 88, 2, 2));
    EXPECT_EQ (layout.knobs[0], Area (20, 74, 11, 25));
    EXPECT_EQ (layout.knobs[5], Area (81, 74, 11, 25));
}

TEST (EditorLayoutTest, SharesTheHeightInDoublePrecision)
{
    // Of the 90 logical pixels below the header 0.7 are 63 in single precision, a hair under that in double.
    const auto layout = layOutEditor (204, 102);
    EXPECT_EQ (layout.header, Area (0, 0, 204, 12));
    EXPECT_EQ (layout.spectrogram, Area (5, 12, 194, 60));
    EXPECT_EQ (layout.knobs[0].getY(), 12 + 62 + 1);
}

TEST (EditorLayoutTest, HasNothingToShareOutInNoSpace)
{
    for (const auto& area : getAreas (layOutEditor (0, 0)))
        EXPECT_TRUE (area.isEmpty());

    // A single row of pixels belongs to the knobs, which have no width to share.
    for (const auto& area : getAreas (layOutEditor (1, 1)))
        EXPECT_TRUE (area.isEmpty());
}

TEST (EditorLayoutTest, InAHighEditorTheKnobsGoFirst)
{
    const auto layout = layOutEditor (300, 2000);
    EXPECT_EQ (layout.spectrogram.getWidth(), 100);
    EXPECT_EQ (layout.tapButton.getWidth(), 239);

    for (const auto& knob : layout.knobs)
        EXPECT_EQ (knob.getWidth(), 0);
}

TEST (EditorLayoutTest, InAWideEditorTheKnobsKeepTheRowsHeight)
{
    const auto layout = layOutEditor (5000, 200);
    EXPECT_EQ (layout.header, Area (0, 0, 5000, 24));

    for (const auto& knob : layout.knobs)
    {
        EXPECT_EQ (knob.getHeight(), layout.knobs.front().getHeight());
        EXPECT_EQ (knob.getWidth(), layout.knobs.front().getWidth());
        EXPECT_GT (knob.getWidth(), 500);
    }

    EXPECT_LE (layout.knobs.back().getRight(), 5000 - 10);
}

TEST (EditorLayoutTest, HasNoNegativeSizesAndNeverPassesTheRightMargin)
{
    std::mt19937 random (7);

    for (auto i = 0; i < 10000; ++i)
    {
        const auto largest = i % 2 == 0 ? 150u : 10000u;
        const auto width = (int) (random() % largest);
        const auto height = (int) (random() % largest);
        const auto layout = layOutEditor (width, height);

        for (const auto& area : getAreas (layout))
        {
            ASSERT_GE (area.getWidth(), 0) << width << 'x' << height;
            ASSERT_GE (area.getHeight(), 0) << width << 'x' << height;
        }

        const auto rowEnd = layout.spectrogram.getRight();
        auto end = 0;

        for (const auto& knob : layout.knobs)
        {
            ASSERT_GE (knob.getX(), end) << width << 'x' << height;
            end = knob.getRight();
        }

        if (layout.spectrogram.getWidth() > height)
        {
            ASSERT_LE (end, rowEnd) << width << 'x' << height;
        }
    }
}
} // namespace
} // namespace cv::varlo
