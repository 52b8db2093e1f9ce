#include "pluginCore/panels/UpdateChangeLogComponent.h"

#include <gtest/gtest.h>

#include <array>
#include <random>

namespace cv::pluginCore
{
namespace
{
using Area = juce::Rectangle<int>;

const juce::Rectangle<float> boxProportions { 0.15f, 0.15f, 0.7f, 0.7f };

Area getBox (int width, int height)
{
    return Area (width, height).getProportion (boxProportions);
}

/** One size of the component, the widths that the buttons would like, and what follows. */
struct Example
{
    juce::Point<int> size;
    int bestCloseWidth, bestDownloadWidth;

    Area box, contentArea;
    int rowHeight;
    Area title, textPanel, downloadButton, closeButton;
};

const std::vector<Example> examples {
    // A window of a usual size.
    { .size = { 1050, 900 },
      .bestCloseWidth = 100,
      .bestDownloadWidth = 300,
      .box = { 157, 135, 735, 630 },
      .contentArea = { 207, 185, 635, 530 },
      .rowHeight = 63,
      .title = { 207, 185, 635, 63 },
      .textPanel = { 207, 269, 635, 362 },
      .downloadButton = { 379, 652, 300, 63 },
      .closeButton = { 742, 652, 100, 63 } },

    // The download button is cut where "close" and one row's height leave it less than it would like.
    { .size = { 1050, 900 },
      .bestCloseWidth = 100,
      .bestDownloadWidth = 473,
      .box = { 157, 135, 735, 630 },
      .contentArea = { 207, 185, 635, 530 },
      .rowHeight = 63,
      .title = { 207, 185, 635, 63 },
      .textPanel = { 207, 269, 635, 362 },
      .downloadButton = { 207, 652, 472, 63 },
      .closeButton = { 742, 652, 100, 63 } },

    // "close" alone takes all there is.
    { .size = { 1050, 900 },
      .bestCloseWidth = 2000,
      .bestDownloadWidth = 300,
      .box = { 157, 135, 735, 630 },
      .contentArea = { 207, 185, 635, 530 },
      .rowHeight = 63,
      .title = { 207, 185, 635, 63 },
      .textPanel = { 207, 269, 635, 362 },
      .downloadButton = { 207, 652, 0, 63 },
      .closeButton = { 207, 652, 635, 63 } },

    // Small.
    { .size = { 100, 100 },
      .bestCloseWidth = 20,
      .bestDownloadWidth = 50,
      .box = { 15, 15, 70, 70 },
      .contentArea = { 20, 20, 60, 60 },
      .rowHeight = 7,
      .title = { 20, 20, 60, 7 },
      .textPanel = { 20, 29, 60, 42 },
      .downloadButton = { 20, 73, 33, 7 },
      .closeButton = { 60, 73, 20, 7 } },

    // Very wide.
    { .size = { 10000, 100 },
      .bestCloseWidth = 20,
      .bestDownloadWidth = 50,
      .box = { 1500, 15, 7000, 70 },
      .contentArea = { 1505, 20, 6990, 60 },
      .rowHeight = 7,
      .title = { 1505, 20, 6990, 7 },
      .textPanel = { 1505, 29, 6990, 42 },
      .downloadButton = { 8418, 73, 50, 7 },
      .closeButton = { 8475, 73, 20, 7 } },

    // Very tall.
    { .size = { 100, 10000 },
      .bestCloseWidth = 20,
      .bestDownloadWidth = 50,
      .box = { 15, 1500, 70, 7000 },
      .contentArea = { 20, 1505, 60, 6990 },
      .rowHeight = 838,
      .title = { 20, 1505, 60, 838 },
      .textPanel = { 20, 2622, 60, 4756 },
      .downloadButton = { 20, 7657, 0, 838 },
      .closeButton = { 60, 7657, 20, 838 } },

    // Nothing to lay out.
    { .size = { 1, 1 },
      .bestCloseWidth = 20,
      .bestDownloadWidth = 50,
      .box = { 0, 0, 0, 0 },
      .contentArea = { 0, 0, 0, 0 },
      .rowHeight = 0,
      .title = { 0, 0, 0, 0 },
      .textPanel = { 0, 0, 0, 0 },
      .downloadButton = { 0, 0, 0, 0 },
      .closeButton = { 0, 0, 0, 0 } },
};

TEST (UpdateChangeLogLayoutTest, FollowsTheProportions)
{
    for (const auto& example : examples)
    {
        SCOPED_TRACE (example.size.toString() + ", " + juce::String (example.bestCloseWidth));

        const auto box = getBox (example.size.x, example.size.y);
        EXPECT_EQ (box, example.box);

        const auto contentArea = getChangeLogContentArea (box);
        EXPECT_EQ (contentArea, example.contentArea);
        EXPECT_EQ (getChangeLogRowHeight (contentArea), example.rowHeight);

        const auto layout = layOutChangeLog (contentArea, example.bestCloseWidth, example.bestDownloadWidth);
        EXPECT_EQ (layout.title, example.title);
        EXPECT_EQ (layout.textPanel, example.textPanel);
        EXPECT_EQ (layout.downloadButton, example.downloadButton);
        EXPECT_EQ (layout.closeButton, example.closeButton);
    }
}

TEST (UpdateChangeLogLayoutTest, TruncatesThePlaceOfTheBox)
{
    EXPECT_EQ (getBox (13, 13), Area (1, 1, 9, 9));
    EXPECT_EQ (getBox (6, 7), Area (0, 1, 4, 4));
}

TEST (UpdateChangeLogLayoutTest, KeepsAllPartsApartAndInsideTheBoxInAnySize)
{
    std::mt19937 random (11);
    std::uniform_int_distribution<int> size (0, 3000), smallSize (0, 60), best (0, 800);

    for (auto i = 0; i < 10000; ++i)
    {
        const auto width = i % 3 == 0 ? smallSize (random) : size (random);
        const auto height = i % 4 == 0 ? smallSize (random) : size (random);
        SCOPED_TRACE (std::to_string (width) + " x " + std::to_string (height));

        const auto box = getBox (width, height);
        const auto layout = layOutChangeLog (getChangeLogContentArea (box), best (random), best (random));
        const std::array parts { layout.title, layout.textPanel, layout.downloadButton, layout.closeButton };

        for (const auto& part : parts)
        {
            ASSERT_GE (part.getWidth(), 0);
            ASSERT_GE (part.getHeight(), 0);
            ASSERT_GE (part.getX(), box.getX());
            ASSERT_GE (part.getY(), box.getY());
            ASSERT_LE (part.getRight(), box.getRight());
            ASSERT_LE (part.getBottom(), box.getBottom());

            for (const auto& other : parts)
                ASSERT_TRUE (&part == &other || ! part.intersects (other));
        }
    }
}
} // namespace
} // namespace cv::pluginCore
