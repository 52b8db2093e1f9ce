#include "varlo/lookAndFeel/LinearSliderPainter.h"

#include "support/Mouse.h"
#include "support/Rendering.h"
#include "varlo/lookAndFeel/PluginLookAndFeel.h"

#include <gtest/gtest.h>

namespace cv::varlo
{
namespace
{
using test::asDrawn;
using test::getAreaOf;
using test::getInkArea;
using test::render;
using Area = juce::Rectangle<int>;
using Slider = juce::Slider;

const juce::Colour red { 0xffff0000 }, blue { 0xff0000ff };

TEST (HorizontalGrooveTest, IsHalfTheAreasHeightInWholeUnits)
{
    const auto even = getHorizontalGroove ({ 0, 0, 100, 20 });
    EXPECT_EQ (even.area.toNearestInt(), Area (0, 5, 100, 10));
    EXPECT_FLOAT_EQ (even.cornerSize, 4.0f);

    const auto odd = getHorizontalGroove ({ 3, 2, 100, 21 });
    EXPECT_EQ (odd.area, juce::Rectangle (3.0f, 7.0f, 100.0f, 11.0f));
    EXPECT_FLOAT_EQ (odd.cornerSize, 4.2f);
}

TEST (VerticalGrooveTest, IsThinAndCentredOnAColumnOfPixels)
{
    const auto beside = getVerticalGroove ({ 0, 4, 11, 100 }, true);
    EXPECT_EQ (beside.area, juce::Rectangle (5.0f, 4.0f, 1.0f, 100.0f));
    EXPECT_FLOAT_EQ (beside.cornerSize, 0.4f);

    EXPECT_EQ (getVerticalGroove ({ 0, 4, 10, 100 }, true).area, juce::Rectangle (4.0f, 4.0f, 1.0f, 100.0f));
    EXPECT_EQ (getVerticalGroove ({ 0, 0, 4, 100 }, true).area.getWidth(), 1.0f) << "at least one logical pixel";

    const auto alone = getVerticalGroove ({ 0, 0, 35, 100 }, false);
    EXPECT_EQ (alone.area, juce::Rectangle (12.0f, 0.0f, 11.0f, 100.0f));
    EXPECT_FLOAT_EQ (alone.cornerSize, 4.0f);
}

TEST (LinearBarTest, ReachesToTheRoundedPosition)
{
    const auto groove = getHorizontalGroove ({ 0, 0, 100, 20 });
    EXPECT_EQ (getHorizontalBar (groove, 40.4f).area, juce::Rectangle (0.0f, 5.0f, 40.0f, 10.0f));
    EXPECT_EQ (getHorizontalBar (groove, 39.5f).area, juce::Rectangle (0.0f, 5.0f, 40.0f, 10.0f));
    EXPECT_EQ (getHorizontalBar (groove, -5.0f).area.getWidth(), 0.0f);
    EXPECT_EQ (getHorizontalBar (groove, 40.0f).cornerSize, groove.cornerSize);

    const auto vertical = getVerticalGroove ({ 0, 0, 35, 100 }, false);
    EXPECT_EQ (getVerticalBar (vertical, 30.4f).area, juce::Rectangle (12.0f, 30.0f, 11.0f, 70.0f));
    EXPECT_EQ (getVerticalBar (vertical, 120.0f).area.getHeight(), 0.0f);
}

TEST (TwoValueBarTest, IsNeverNarrowerThanHalfTheGroovesHeight)
{
    const auto groove = getHorizontalGroove ({ 0, 0, 100, 20 });
    EXPECT_EQ (getTwoValueBar (groove, 19.6f, 60.4f).area, juce::Rectangle (20.0f, 5.0f, 40.0f, 10.0f));
    EXPECT_EQ (getTwoValueBar (groove, 50.0f, 55.0f).area, juce::Rectangle (50.0f, 5.0f, 5.0f, 10.0f));
    EXPECT_EQ (getTwoValueBar (groove, 50.0f, 52.0f).area, juce::Rectangle (48.5f, 5.0f, 5.0f, 10.0f));
    EXPECT_EQ (getTwoValueBar (groove, 50.0f, 50.0f).area, juce::Rectangle (47.5f, 5.0f, 5.0f, 10.0f));
}

TEST (LinearDotsTest, WantABarOfOneAndFourFifthsOfItsHeight)
{
    EXPECT_FALSE (hasRoomForDots ({ { 0.0f, 0.0f, 17.0f, 10.0f }, 4.0f }));
    EXPECT_TRUE (hasRoomForDots ({ { 0.0f, 0.0f, 18.0f, 10.0f }, 4.0f }));
}

TEST (LinearDotsTest, LieAtTheEndsOfTheBar)
{
    const RoundedBar bar { { 20.0f, 5.0f, 40.0f, 10.0f }, 4.0f };
    EXPECT_EQ (getLeftDot (bar), juce::Rectangle (21.0f, 6.0f, 8.0f, 8.0f));
    EXPECT_EQ (getRightDot (bar), juce::Rectangle (51.0f, 6.0f, 8.0f, 8.0f));
}

TEST (LinearDotsTest, TheOneNearerToTheMouseIsDarker)
{
    const RoundedBar bar { { 20.0f, 5.0f, 40.0f, 10.0f }, 4.0f };
    const juce::Colour thumb (0xffc8a08c);
    const juce::Colour nearer (0xff7d6457), farther (0xff997b6b);

    EXPECT_EQ (getDotColours (bar, { 30.0f, 0.0f }, thumb), (std::array { nearer, farther }));
    EXPECT_EQ (getDotColours (bar, { 50.0f, 20.0f }, thumb), (std::array { farther, nearer }));
    EXPECT_EQ (getDotColours (bar, { 40.0f, 10.0f }, thumb), (std::array { farther, nearer })) << "halfway";
}

class LinearSliderTest : public testing::Test
{
protected:
    static LinearSliderState makeState (Slider::SliderStyle style)
    {
        LinearSliderState state;
        const Slider slider (style, Slider::NoTextBox);
        state.isVertical = slider.isVertical();
        state.hasTwoValues = slider.isTwoValue();
        state.position = 40.0f;
        state.minPosition = 20.0f;
        state.maxPosition = 60.0f;
        state.track = red;
        state.thumb = blue;
        return state;
    }

    static juce::Image draw (const LinearSliderState& state, int width = 100, int height = 20, float scale = 1.0f)
    {
        return render (juce::roundToInt (scale * (float) width), juce::roundToInt (scale * (float) height),
                       [&] (juce::Graphics& g)
                       {
                           g.addTransform (juce::AffineTransform::scale (scale));
                           paintLinearSlider (g, { width, height }, state);
                       });
    }
};

TEST_F (LinearSliderTest, HorizontalOneFillsItsGrooveFromTheLeft)
{
    for (const auto style : { Slider::LinearHorizontal, Slider::LinearBar, Slider::ThreeValueHorizontal })
    {
        const auto image = draw (makeState (style));
        EXPECT_EQ (getInkArea (image), Area (0, 5, 100, 10));
        EXPECT_EQ (getAreaOf (image, blue), Area (0, 5, 40, 10));
        EXPECT_EQ (image.getPixelAt (50, 10), red);
        EXPECT_EQ (getAreaOf (draw (makeState (style), 100, 20, 2.0f), blue), Area (0, 10, 80, 20));
    }
}

TEST_F (LinearSliderTest, CornersAreAFifthOfTheHeight)
{
    const auto image = draw (makeState (Slider::LinearHorizontal));
    EXPECT_LT (image.getPixelAt (99, 5).getAlpha(), 128);
    EXPECT_EQ (image.getPixelAt (95, 5).getAlpha(), 255);
    EXPECT_GT (image.getPixelAt (99, 9).getAlpha(), 250);
    EXPECT_NE (image.getPixelAt (39, 5), blue);
    EXPECT_EQ (image.getPixelAt (35, 5), blue);
}

TEST_F (LinearSliderTest, HorizontalOneShowsADotUnderTheMouseIfThereIsRoom)
{
    auto state = makeState (Slider::LinearHorizontal);
    state.isHovered = true;
    EXPECT_EQ (getAreaOf (draw (state), blue.darker (0.6f)), Area (32, 7, 6, 6))
        << "what a dot of 8 logical pixels fills";
    EXPECT_EQ (draw (state).getPixelAt (50, 10), red.brighter (0.15f));

    state.position = 18.0f;
    EXPECT_EQ (draw (state).getPixelAt (13, 10), blue.darker (0.6f));

    state.position = 17.0f;
    EXPECT_TRUE (getAreaOf (draw (state), blue.darker (0.6f)).isEmpty());
}

TEST_F (LinearSliderTest, TwoValueOneFillsWhatLiesBetween)
{
    auto state = makeState (Slider::TwoValueHorizontal);
    EXPECT_EQ (getAreaOf (draw (state), blue), Area (20, 5, 40, 10));
    EXPECT_EQ (draw (state).getPixelAt (10, 10), red);
    EXPECT_EQ (draw (state).getPixelAt (80, 10), red);

    state.minPosition = 50.0f;
    state.maxPosition = 51.0f;
    EXPECT_EQ (getAreaOf (draw (state), blue), Area (48, 6, 5, 8)) << "at least half as wide as high";
}

TEST_F (LinearSliderTest, TwoValueOneShowsTwoDotsUnderTheMouse)
{
    const auto nearer = blue.darker (0.6f), farther = blue.darker (0.3f);
    auto state = makeState (Slider::TwoValueHorizontal);
    state.isHovered = true;

    state.mousePosition = { 22.0f, 10.0f };
    EXPECT_EQ (draw (state).getPixelAt (25, 10), nearer);
    EXPECT_EQ (draw (state).getPixelAt (55, 10), farther);

    state.mousePosition = { 58.0f, 10.0f };
    EXPECT_EQ (draw (state).getPixelAt (25, 10), farther);
    EXPECT_EQ (draw (state).getPixelAt (55, 10), nearer);

    state.isHovered = false;
    EXPECT_EQ (draw (state).getPixelAt (25, 10), blue);

    state.isHovered = true;
    state.maxPosition = 37.0f;
    EXPECT_EQ (draw (state).getPixelAt (25, 10), blue) << "no room";
}

TEST_F (LinearSliderTest, VerticalOneFillsItsGrooveFromTheBottom)
{
    for (const auto style :
         { Slider::LinearVertical, Slider::LinearBarVertical, Slider::TwoValueVertical, Slider::ThreeValueVertical })
    {
        auto state = makeState (style);
        state.isHovered = true;
        const auto image = draw (state, 35, 100);
        EXPECT_EQ (getInkArea (image), Area (12, 0, 11, 100));
        EXPECT_EQ (getAreaOf (image, blue), Area (12, 40, 11, 60));
        EXPECT_EQ (image.getPixelAt (17, 20), red.brighter (0.15f));

        state.hasTextBox = true;
        EXPECT_EQ (getInkArea (draw (state, 33, 100)), Area (15, 0, 3, 100));
    }
}

TEST_F (LinearSliderTest, DisabledOneIsHalfTransparent)
{
    auto state = makeState (Slider::LinearHorizontal);
    state.isEnabled = false;
    EXPECT_EQ (draw (state).getPixelAt (80, 10), asDrawn (red.withAlpha (0.5f)));

    state.track = juce::Colours::transparentBlack;
    EXPECT_EQ (draw (state).getPixelAt (20, 10), asDrawn (blue.withAlpha (0.5f)));
}

TEST_F (LinearSliderTest, NothingLeavesTheGrooveAndTheClipIsGivenBack)
{
    auto state = makeState (Slider::TwoValueHorizontal);
    state.minPosition = state.maxPosition = 10.0f;

    const auto image = render (100, 20,
                               [&] (juce::Graphics& g)
                               {
                                   paintLinearSlider (g, { 10, 0, 80, 20 }, state);
                                   g.setColour (juce::Colours::white);
                                   g.fillRect (0, 0, 1, 1);
                               });

    EXPECT_EQ (getAreaOf (image, juce::Colours::white), Area (0, 0, 1, 1));
    EXPECT_EQ (getInkArea (image.getClippedImage ({ 1, 0, 99, 20 })), Area (9, 5, 80, 10));
}

TEST_F (LinearSliderTest, IsReadFromTheSlider)
{
    PluginLookAndFeel look;
    Slider slider (Slider::LinearVertical, Slider::NoTextBox);
    juce::Component parent;
    parent.addAndMakeVisible (slider);
    parent.setColour (Slider::trackColourId, red);
    slider.setColour (Slider::thumbColourId, blue);
    slider.setTextBoxStyle (Slider::NoTextBox, false, 0, 0);

    const auto drawSlider = [&] (int width)
    {
        return render (
            width, 100,
            [&] (juce::Graphics& g)
            { look.drawLinearSlider (g, 0, 0, width, 100, 40.0f, 0.0f, 0.0f, slider.getSliderStyle(), slider); });
    };

    EXPECT_EQ (getAreaOf (drawSlider (35), blue), Area (12, 40, 11, 60));
    EXPECT_EQ (drawSlider (35).getPixelAt (17, 20), red);

    slider.setTextBoxStyle (Slider::TextBoxRight, false, 20, 10);
    EXPECT_EQ (getAreaOf (drawSlider (33), blue), Area (15, 40, 3, 60));

    parent.setEnabled (false);
    EXPECT_EQ (drawSlider (33).getPixelAt (16, 20), asDrawn (red.withAlpha (0.5f)));
}

/** A slider with two values, from 20 to 60 logical pixels, in a window. */
class LinearSliderUnderMouseTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_FALSE (juce::Desktop::getInstance().getDisplays().displays.isEmpty()) << "This needs a display.";

        slider.setColour (Slider::thumbColourId, blue);
        slider.setBounds (40, 30, 100, 20);
        window.setBounds (20, 20, 200, 200);
        window.addAndMakeVisible (slider);
        window.addToDesktop (0);
        window.setVisible (true);
    }

    void TearDown() override { moveTo ({ 0, 150 }); }

    /** To a position in the slider. It asks the system where the mouse is. */
    void moveTo (juce::Point<int> position)
    {
        juce::Desktop::setMousePosition (slider.localPointToGlobal (position));
        test::sendMouse (window, window.getLocalPoint (&slider, position).toFloat(), false);
    }

    juce::Image draw()
    {
        return render (
            100, 20,
            [&] (juce::Graphics& g)
            { look.drawLinearSlider (g, 0, 0, 100, 20, 0.0f, 20.0f, 60.0f, Slider::TwoValueHorizontal, slider); });
    }

    PluginLookAndFeel look;
    juce::Component window;
    Slider slider { Slider::TwoValueHorizontal, Slider::NoTextBox };
};

TEST_F (LinearSliderUnderMouseTest, TheDotNearerToTheMouseIsDarker)
{
    moveTo ({ 0, 150 });
    EXPECT_EQ (draw().getPixelAt (25, 10), blue);

    moveTo ({ 22, 10 });
    EXPECT_EQ (draw().getPixelAt (25, 10), blue.darker (0.6f));
    EXPECT_EQ (draw().getPixelAt (55, 10), blue.darker (0.3f));

    moveTo ({ 58, 10 });
    EXPECT_EQ (draw().getPixelAt (25, 10), blue.darker (0.3f));
    EXPECT_EQ (draw().getPixelAt (55, 10), blue.darker (0.6f));

    slider.setEnabled (false);
    EXPECT_EQ (draw().getPixelAt (25, 10).getBlue(), draw().getPixelAt (40, 10).getBlue()) << "no dots";
}
} // namespace
} // namespace cv::varlo
