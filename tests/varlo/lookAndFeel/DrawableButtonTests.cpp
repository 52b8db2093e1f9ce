#include "support/Mouse.h"
#include "support/Rendering.h"
#include "varlo/lookAndFeel/PluginLookAndFeel.h"

#include <gtest/gtest.h>

namespace cv::varlo
{
namespace
{
using test::getInkArea;
using test::render;
using Area = juce::Rectangle<int>;

/** A button of 60 logical pixels whose image is a square of 40 logical pixels in its middle. */
class DrawableButtonTest : public testing::Test
{
protected:
    DrawableButtonTest()
    {
        juce::Path square;
        square.addRectangle (0.0f, 0.0f, 40.0f, 40.0f);
        juce::DrawablePath image;
        image.setPath (square);
        image.setFill (juce::Colours::white);
        button.setLookAndFeel (&look);
        button.setSize (60, 60);
        button.setEdgeIndent (10);
        button.setImages (&image);
    }

    ~DrawableButtonTest() override { button.setLookAndFeel (nullptr); }

    juce::Image drawShadow()
    {
        return render (60, 60, [&] (juce::Graphics& g) { look.drawDrawableButton (g, button, false, false); });
    }

    int shadowAlpha() { return drawShadow().getPixelAt (30, 30).getAlpha(); }

    PluginLookAndFeel look;
    juce::DrawableButton button { {}, juce::DrawableButton::ImageFitted };
};

TEST_F (DrawableButtonTest, ShadowIsStrongerWhenToggledAndHalfWhenDisabled)
{
    EXPECT_NEAR (shadowAlpha(), 102, 1);
    button.setToggleState (true, juce::dontSendNotification);
    EXPECT_NEAR (shadowAlpha(), 204, 1);
    button.setEnabled (false);
    EXPECT_NEAR (shadowAlpha(), 102, 1);
    button.setToggleState (false, juce::dontSendNotification);
    EXPECT_NEAR (shadowAlpha(), 51, 1);
}

TEST_F (DrawableButtonTest, ShadowLiesToTheRightAndBelowAtRest)
{
    const auto flat = Area (10, 10, 40, 40);
    const auto ink = getInkArea (drawShadow());
    EXPECT_EQ (ink.getCentre(), flat.getCentre() + juce::Point (1, 1));
    EXPECT_GT (ink.getWidth(), 40);
    EXPECT_LE (ink.getWidth(), 46);

    button.setEnabled (false);
    EXPECT_EQ (getInkArea (drawShadow()).getCentre(), flat.getCentre());
}

TEST_F (DrawableButtonTest, WithoutAnImageHasNoShadow)
{
    juce::DrawableButton empty ({}, juce::DrawableButton::ImageFitted);
    empty.setLookAndFeel (&look);
    empty.setSize (60, 60);
    EXPECT_TRUE (getInkArea (render (empty)).isEmpty());
    empty.setLookAndFeel (nullptr);
}

class DrawableButtonUnderMouseTest : public DrawableButtonTest
{
protected:
    void SetUp() override
    {
        ASSERT_FALSE (juce::Desktop::getInstance().getDisplays().displays.isEmpty()) << "This needs a display.";
        window.setBounds (20, 20, 200, 200);
        window.addAndMakeVisible (button);
        window.addToDesktop (0);
        window.setVisible (true);
    }

    void TearDown() override { moveTo ({ 150, 150 }); }

    /** The button asks the system where the mouse is. */
    void moveTo (juce::Point<int> position)
    {
        juce::Desktop::setMousePosition (window.localPointToGlobal (position));
        test::sendMouse (window, position.toFloat(), false);
    }

    juce::Component window;
};

TEST_F (DrawableButtonUnderMouseTest, ShadowIsStrongerAndFurtherDown)
{
    moveTo ({ 150, 150 });
    EXPECT_NEAR (shadowAlpha(), 102, 1);

    moveTo ({ 30, 30 });
    EXPECT_NEAR (shadowAlpha(), 153, 1);
    EXPECT_EQ (getInkArea (drawShadow()).getCentre(), juce::Point (31, 32));

    test::pressMouseOn (button);
    EXPECT_EQ (getInkArea (drawShadow()).getCentre(), juce::Point (30, 30));
    test::releaseMouseOn (button);
}
} // namespace
} // namespace cv::varlo
