#include "varlo/lookAndFeel/ResizerPainter.h"

#include "support/Rendering.h"
#include "varlo/lookAndFeel/PluginLookAndFeel.h"

#include <gtest/gtest.h>

namespace cv::varlo
{
namespace
{
using test::getAreaOf;
using test::getInkArea;
using test::render;
using Area = juce::Rectangle<int>;

TEST (CornerDotsTest, LieInAnLAndGrowWithTheCorner)
{
    EXPECT_EQ (getCornerDots (18, 18), (std::array { Area (9, 9, 4, 4), Area (9, 0, 4, 4), Area (0, 9, 4, 4) }));
    EXPECT_EQ (getCornerDots (40, 20), (std::array { Area (20, 10, 4, 4), Area (20, 0, 4, 4), Area (0, 10, 4, 4) }));
    EXPECT_EQ (getCornerDots (1, 1), (std::array { Area (0, 0, 0, 0), Area (0, 0, 0, 0), Area (0, 0, 0, 0) }));
}

TEST (CornerDotsTest, AreBrighterUnderTheMouse)
{
    const juce::Colour groove (0xff406080);
    EXPECT_EQ (getCornerDotColour (groove, false), groove.brighter (0.2f).darker (0.2f));
    EXPECT_EQ (getCornerDotColour (groove, true), groove.brighter (0.2f).brighter (0.2f));
}

TEST (CornerResizerTest, DrawsThreeDots)
{
    const juce::Colour groove (0xff406080);
    PluginLookAndFeel look;
    look.setColour (juce::Slider::trackColourId, groove);

    const auto draw = [&] (bool isOver, bool isDragging)
    { return render (50, 50, [&] (juce::Graphics& g) { look.drawCornerResizer (g, 50, 50, isOver, isDragging); }); };

    const auto image = draw (false, false);
    EXPECT_EQ (getInkArea (image), Area (0, 0, 36, 36));

    for (const auto& dot : { Area (25, 25, 11, 11), Area (25, 0, 11, 11), Area (0, 25, 11, 11) })
    {
        EXPECT_EQ (image.getPixelAt (dot.getCentreX(), dot.getCentreY()), getCornerDotColour (groove, false));
        EXPECT_LT (image.getPixelAt (dot.getX(), dot.getY()).getAlpha(), 40);
    }

    EXPECT_TRUE (image.getPixelAt (10, 10).isTransparent());

    const auto bright = getCornerDotColour (groove, true);
    EXPECT_EQ (draw (true, false).getPixelAt (30, 30), bright);
    EXPECT_EQ (draw (false, true).getPixelAt (30, 30), bright);
}

class ResizableFrameTest : public testing::Test
{
protected:
    juce::Image draw (const juce::BorderSize<int>& border)
    {
        return render (100, 50,
                       [&] (juce::Graphics& g)
                       {
                           look.drawResizableFrame (g, 100, 50, border);
                           g.setColour (juce::Colours::white);
                           g.fillRect (50, 25, 1, 1);
                       });
    }

    PluginLookAndFeel look;
};

TEST_F (ResizableFrameTest, IsARoundedLineOneUnitWide)
{
    const auto image = draw (juce::BorderSize<int> (4));
    const auto line = look.findColour (juce::PopupMenu::backgroundColourId).contrasting (0.01f);

    EXPECT_NEAR (image.getPixelAt (50, 0).getAlpha(), line.getAlpha(), 3);
    EXPECT_NEAR (image.getPixelAt (50, 0).getRed(), line.getRed(), 1);
    EXPECT_NEAR (image.getPixelAt (0, 25).getAlpha(), line.getAlpha(), 3);
    EXPECT_NEAR (image.getPixelAt (99, 25).getAlpha(), line.getAlpha(), 3);
    EXPECT_NEAR (image.getPixelAt (50, 49).getAlpha(), line.getAlpha(), 3);
    EXPECT_TRUE (image.getPixelAt (50, 1).isTransparent());
    EXPECT_LT (image.getPixelAt (0, 0).getAlpha(), 64);
    EXPECT_GT (image.getPixelAt (1, 1).getAlpha(), 64) << "the corner's radius is three logical pixels";
    EXPECT_TRUE (image.getPixelAt (2, 2).isTransparent());
    EXPECT_EQ (image.getPixelAt (50, 25), juce::Colours::white) << "the clip is given back";
}

TEST_F (ResizableFrameTest, ReachesAsFarAsTheBorder)
{
    const auto image = draw ({ 0, 4, 0, 0 });
    EXPECT_TRUE (image.getPixelAt (50, 0).isTransparent());
    EXPECT_FALSE (image.getPixelAt (0, 25).isTransparent());
    EXPECT_TRUE (image.getPixelAt (99, 25).isTransparent());
}

TEST_F (ResizableFrameTest, WithoutABorderThereIsNone)
{
    EXPECT_EQ (getInkArea (draw (juce::BorderSize<int> (0))), Area (50, 25, 1, 1));
}
} // namespace
} // namespace cv::varlo
