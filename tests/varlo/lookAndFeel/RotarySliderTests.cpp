#include "varlo/lookAndFeel/RotarySliderPainter.h"

#include "support/Rendering.h"
#include "varlo/lookAndFeel/PluginLookAndFeel.h"

#include <gtest/gtest.h>

namespace cv::varlo
{
namespace
{
using juce::MathConstants;
using test::getAreaOf;
using test::getInkArea;
using test::render;
using Area = juce::Rectangle<int>;

constexpr auto pi = MathConstants<float>::pi;
const juce::Colour red { 0xffff0000 }, blue { 0xff0000ff };

TEST (RotaryRingTest, IsASquareAtTheCentreTwoUnitsFromTheEdges)
{
    const auto ring = getRotaryRing ({ 0, 0, 104, 104 });
    EXPECT_EQ (ring.bounds, juce::Rectangle (2.0f, 2.0f, 100.0f, 100.0f));
    EXPECT_FLOAT_EQ (ring.thickness, 8.0f);
    EXPECT_FLOAT_EQ (ring.getInnerRadius(), 42.0f);
    EXPECT_FLOAT_EQ (ring.getMiddleRadius(), 46.0f);

    const auto high = getRotaryRing ({ 10, 20, 64, 104 });
    EXPECT_EQ (high.bounds, juce::Rectangle (12.0f, 42.0f, 60.0f, 60.0f));
    EXPECT_FLOAT_EQ (high.thickness, 4.8f);

    EXPECT_EQ (getRotaryRing ({ 0, 0, 131, 97 }).bounds, juce::Rectangle (19.0f, 2.0f, 93.0f, 93.0f));
}

TEST (RotaryRingTest, HasNoSizeWithoutRoom)
{
    for (const auto size : { 0, 1, 4 })
        EXPECT_TRUE (getRotaryRing ({ 0, 0, size, 100 }).bounds.isEmpty()) << size;
}

TEST (RotaryRingTest, CapIsARoundedSquareOnTheRing)
{
    const auto ring = getRotaryRing ({ 0, 0, 104, 104 });
    using Cap = RotaryRing::Cap;

    const auto boundsAt = [&] (float angle, Cap cap) { return ring.makeCap (angle, cap).getBounds().toNearestInt(); };
    EXPECT_EQ (boundsAt (0.0f, Cap::whole), Area (48, 2, 8, 8));
    EXPECT_EQ (boundsAt (0.0f, Cap::lowerHalf), Area (48, 2, 4, 8));
    EXPECT_EQ (boundsAt (0.0f, Cap::upperHalf), Area (52, 2, 4, 8));
    EXPECT_EQ (boundsAt (pi / 2.0f, Cap::whole), Area (94, 48, 8, 8));
    EXPECT_EQ (boundsAt (pi / 2.0f, Cap::lowerHalf), Area (94, 48, 8, 4));
    EXPECT_EQ (boundsAt (pi, Cap::upperHalf), Area (48, 94, 4, 8));

    // Rounded where the cap ends, straight where it meets the arc.
    const auto whole = ring.makeCap (0.0f, Cap::whole);
    EXPECT_FALSE (whole.contains (48.5f, 2.5f));
    EXPECT_FALSE (whole.contains (55.5f, 9.5f));
    EXPECT_FALSE (ring.makeCap (0.0f, Cap::lowerHalf).contains (48.2f, 2.2f));
    EXPECT_TRUE (ring.makeCap (0.0f, Cap::lowerHalf).contains (51.8f, 2.2f));
    EXPECT_TRUE (ring.makeCap (0.0f, Cap::upperHalf).contains (52.2f, 9.8f));
    EXPECT_FALSE (ring.makeCap (0.0f, Cap::upperHalf).contains (55.8f, 9.8f));
}

TEST (RotaryColourTest, FollowEnablementAndMouse)
{
    RotarySliderState state;
    state.track = juce::Colour (0xff204060);
    state.thumb = juce::Colour (0xff1e9d88);
    EXPECT_EQ (getRotaryTrackColour (state), state.track);
    EXPECT_EQ (getRotaryThumbColour (state), state.thumb);

    state.isHovered = true;
    EXPECT_EQ (getRotaryTrackColour (state), state.track.brighter (0.15f));
    EXPECT_EQ (getRotaryThumbColour (state), state.thumb.brighter (0.06f));

    state.isHovered = false;
    state.isEnabled = false;
    EXPECT_EQ (getRotaryTrackColour (state).getARGB(), 0x80204060u);
    EXPECT_EQ (getRotaryThumbColour (state).getARGB(), 0x80157061u);

    state.thumb = juce::Colour (0x801e9d88);
    EXPECT_EQ (getRotaryThumbColour (state).getARGB(), 0x40157061u);
}

/** A red ring of 100 logical pixels with a blue arc, at (12, 12) of a 124 logical pixels wide picture. */
class RotarySliderTest : public testing::Test
{
protected:
    RotarySliderTest()
    {
        slider.setSliderStyle (juce::Slider::RotaryVerticalDrag);
        slider.setColour (juce::Slider::trackColourId, red);
        slider.setColour (juce::Slider::thumbColourId, blue);
        slider.setRange (0.0, 100.0);
        slider.setLookAndFeel (&look);
        slider.setSize (104, 104);
    }

    ~RotarySliderTest() override { slider.setLookAndFeel (nullptr); }

    /** The slider as the look draws it, its range from the top clockwise to the bottom. */
    juce::Image draw (float position, float scale = 1.0f)
    {
        const auto size = juce::roundToInt (124.0f * scale);
        return render (size, size,
                       [&] (juce::Graphics& g)
                       {
                           g.addTransform (juce::AffineTransform::scale (scale));
                           look.drawRotarySlider (g, 10, 10, 104, 104, position, 0.0f, pi, slider);
                       });
    }

    static juce::Image draw (const RotarySliderState& state)
    {
        return render (124, 124,
                       [&] (juce::Graphics& g) {
                           paintRotarySlider (g, getRotaryRing ({ 10, 10, 104, 104 }), state);
                       });
    }

    static juce::Colour colourAt (const juce::Image& image, float angle, float radius = 46.0f, float scale = 1.0f)
    {
        const auto point = juce::Point (62.0f, 62.0f).getPointOnCircumference (radius, angle) * scale;
        return image.getPixelAt ((int) point.x, (int) point.y);
    }

    /** An enabled slider at rest, the arc from the top to the right, its range from the top to the bottom. */
    RotarySliderState makeState() const
    {
        RotarySliderState state;
        state.valueAngle = pi / 2.0f;
        state.rangeEndAngle = pi;
        state.shadowOffset = { 1, 1 };
        state.track = red;
        state.thumb = blue;
        return state;
    }

    PluginLookAndFeel look;
    juce::Slider slider;
};

TEST_F (RotarySliderTest, RingIsEightPercentThick)
{
    for (const auto scale : { 1.0f, 2.0f })
    {
        const auto image = draw (0.0f, scale);
        const auto row = juce::roundToInt (62.0f * scale);
        const auto isRing = [] (juce::Colour colour) { return colour.getRed() > 200 && colour.getAlpha() > 200; };
        const auto strip =
            test::getAreaWhere (image.getClippedImage ({ 0, row, juce::roundToInt (30.0f * scale), 1 }), isRing);

        EXPECT_EQ (strip.getX(), juce::roundToInt (12.0f * scale)) << scale;
        EXPECT_EQ (strip.getWidth(), juce::roundToInt (8.0f * scale)) << scale;
    }
}

TEST_F (RotarySliderTest, AtItsStartShowsADotAsLargeAsTheRingIsThick)
{
    EXPECT_EQ (getAreaOf (draw (0.0f), blue), Area (58, 12, 8, 8));
    EXPECT_EQ (getAreaOf (draw (0.0f, 2.0f), blue), Area (116, 24, 16, 16));
    EXPECT_NE (draw (0.0f).getPixelAt (58, 12), blue);
}

TEST_F (RotarySliderTest, ArcReachesFromTheStartToTheValue)
{
    for (const auto scale : { 1.0f, 2.0f })
    {
        for (const auto position : { 0.25f, 0.5f, 1.0f })
        {
            const auto image = draw (position, scale);
            const auto value = position * pi;
            EXPECT_EQ (colourAt (image, 0.05f, 46.0f, scale), blue) << position;
            EXPECT_EQ (colourAt (image, value / 2.0f, 46.0f, scale), blue) << position;
            EXPECT_EQ (colourAt (image, value - 0.05f, 46.0f, scale), blue) << position;
            EXPECT_EQ (colourAt (image, value + 0.05f, 46.0f, scale), blue) << position << ": the cap";
            EXPECT_EQ (colourAt (image, value + 0.15f, 46.0f, scale), red) << position;
            EXPECT_EQ (colourAt (image, -0.05f, 46.0f, scale), blue) << position << ": the cap";
            EXPECT_EQ (colourAt (image, -0.15f, 46.0f, scale), red) << position;
        }
    }
}

TEST_F (RotarySliderTest, CentredOneBeginsAtTheValueOfADoubleClick)
{
    slider.getProperties().set ("centered", true);
    slider.setDoubleClickReturnValue (true, 50.0);

    const auto above = draw (0.75f);
    EXPECT_EQ (colourAt (above, 0.25f * pi), red);
    EXPECT_EQ (colourAt (above, 0.6f * pi), blue);
    EXPECT_EQ (colourAt (above, 0.9f * pi), red);

    const auto below = draw (0.25f);
    EXPECT_EQ (colourAt (below, 0.15f * pi), red);
    EXPECT_EQ (colourAt (below, 0.3f * pi), blue);
    EXPECT_EQ (colourAt (below, 0.45f * pi), blue);
    EXPECT_EQ (colourAt (below, 0.6f * pi), red);

    EXPECT_EQ (getAreaOf (draw (0.5f), blue), Area (104, 58, 8, 8));
}

TEST_F (RotarySliderTest, CentredOneFollowsASkewedRange)
{
    slider.getProperties().set ("centered", true);
    slider.setSkewFactorFromMidPoint (10.0);
    slider.setDoubleClickReturnValue (true, 10.0);
    EXPECT_NEAR (getRotarySliderState (slider, 0.75f, 0.0f, pi).arcStartAngle, pi / 2.0f, 0.0001f);
}

TEST_F (RotarySliderTest, WithoutADoubleClickValueOrThePropertyBeginsAtTheStart)
{
    slider.getProperties().set ("centered", true);
    slider.setDoubleClickReturnValue (false, 50.0);
    EXPECT_EQ (getRotarySliderState (slider, 0.75f, 0.5f, pi).arcStartAngle, 0.5f);
    EXPECT_EQ (colourAt (draw (0.75f), 0.25f * pi), blue);

    slider.getProperties().set ("centered", false);
    slider.setDoubleClickReturnValue (true, 50.0);
    EXPECT_EQ (getRotarySliderState (slider, 0.75f, 0.5f, pi).arcStartAngle, 0.5f);
}

TEST_F (RotarySliderTest, TranslucentCapsDontShowOnTheArc)
{
    auto state = makeState();
    state.track = juce::Colours::transparentBlack;
    state.thumb = blue.withAlpha ((juce::uint8) 128);

    const auto image = draw (state);
    const auto alpha = colourAt (image, pi / 4.0f).getAlpha();
    EXPECT_NEAR (alpha, 128 + 25, 10);

    for (const auto angle : { -0.03f, 0.04f, pi / 2.0f - 0.04f, pi / 2.0f + 0.04f })
        EXPECT_NEAR (colourAt (image, angle).getAlpha(), alpha, 3) << angle;

    EXPECT_LT (colourAt (image, -0.15f).getAlpha(), 60);
    EXPECT_LT (colourAt (image, pi / 2.0f + 0.15f).getAlpha(), 60);
}

TEST_F (RotarySliderTest, DisabledOneIsHalfTransparentAndItsArcDarker)
{
    slider.setColour (juce::Slider::trackColourId, juce::Colours::transparentBlack);
    slider.setEnabled (false);

    const auto colour = colourAt (draw (0.5f), pi / 4.0f);
    EXPECT_NEAR (colour.getAlpha(), 128 + 12, 8);
    EXPECT_NEAR (colour.getBlue(), 255.0f / 1.4f * 128.0f / (float) colour.getAlpha(), 4.0f);
}

TEST_F (RotarySliderTest, DisabledOneCastsHalfTheShadowWithoutOffset)
{
    auto state = makeState();
    state.track = state.thumb = juce::Colours::transparentBlack;
    state.shadowOffset = {};
    const auto strong = draw (state);
    EXPECT_NEAR (colourAt (strong, 1.0f).getAlpha(), 51, 1);

    state.isEnabled = false;
    const auto weak = draw (state);
    EXPECT_NEAR (colourAt (weak, 1.0f).getAlpha(), 26, 1);
    EXPECT_EQ (getInkArea (weak), getInkArea (strong));

    slider.setColour (juce::Slider::trackColourId, juce::Colours::transparentBlack);
    slider.setColour (juce::Slider::thumbColourId, juce::Colours::transparentBlack);
    slider.setEnabled (false);
    EXPECT_EQ (getInkArea (draw (0.5f)), getInkArea (weak));
    EXPECT_NEAR (colourAt (draw (0.5f), 1.0f).getAlpha(), 26, 1);
}

TEST_F (RotarySliderTest, ShadowLiesWhereTheMouseStateSays)
{
    auto state = makeState();
    state.track = state.thumb = juce::Colours::transparentBlack;
    state.shadowOffset = {};
    const auto pressed = getInkArea (draw (state));
    EXPECT_EQ (pressed.getCentre(), juce::Point (62, 62));

    for (const auto offset : { juce::Point (1, 1), juce::Point (1, 2) })
    {
        state.shadowOffset = offset;
        EXPECT_EQ (getInkArea (draw (state)), pressed + offset);
    }

    slider.setColour (juce::Slider::trackColourId, juce::Colours::transparentBlack);
    slider.setColour (juce::Slider::thumbColourId, juce::Colours::transparentBlack);
    EXPECT_EQ (getInkArea (draw (0.5f)), pressed + juce::Point (1, 1)) << "at rest";
}

TEST_F (RotarySliderTest, UnlitPartDarkensTowardsTheValueUnderTheMouse)
{
    auto state = makeState();
    state.track = juce::Colour (0xffc0c0c0);
    const auto plain = draw (state);
    EXPECT_EQ (colourAt (plain, 0.6f * pi), state.track);
    EXPECT_EQ (colourAt (plain, 0.95f * pi), state.track);

    state.isHovered = true;
    const auto hovered = draw (state);
    const auto bright = state.track.brighter (0.15f).getRed();
    EXPECT_NEAR (colourAt (hovered, pi - 0.02f).getRed(), bright, 3);
    EXPECT_NEAR (colourAt (hovered, 0.54f * pi).getRed(), 0.7f * bright, 6.0f);
    EXPECT_GT (colourAt (hovered, 0.9f * pi).getRed(), colourAt (hovered, 0.7f * pi).getRed());
    EXPECT_GT (colourAt (hovered, 0.7f * pi).getRed(), colourAt (hovered, 0.6f * pi).getRed());
    EXPECT_EQ (colourAt (hovered, pi / 4.0f), blue.brighter (0.06f));

    state.valueAngle = state.rangeEndAngle;
    EXPECT_EQ (colourAt (draw (state), 1.5f * pi), state.track.brighter (0.15f)) << "nothing is unlit";
}

TEST_F (RotarySliderTest, IsReadAsItStands)
{
    const auto state = getRotarySliderState (slider, 0.25f, 1.0f, 3.0f);
    EXPECT_EQ (state.arcStartAngle, 1.0f);
    EXPECT_EQ (state.valueAngle, 1.5f);
    EXPECT_EQ (state.rangeEndAngle, 3.0f);
    EXPECT_TRUE (state.isEnabled);
    EXPECT_FALSE (state.isHovered);
    EXPECT_EQ (state.shadowOffset, juce::Point (1, 1));

    juce::Component parent;
    parent.setColour (juce::Slider::trackColourId, juce::Colours::yellow);
    parent.addAndMakeVisible (slider);
    slider.setLookAndFeel (nullptr);
    slider.removeColour (juce::Slider::trackColourId);
    EXPECT_EQ (getRotarySliderState (slider, 0.0f, 0.0f, 1.0f).track, juce::Colours::yellow);

    parent.setEnabled (false);
    EXPECT_FALSE (getRotarySliderState (slider, 0.0f, 0.0f, 1.0f).isEnabled);
}

TEST_F (RotarySliderTest, WithoutRoomDrawsNothing)
{
    for (const auto size : { 0, 1, 3, 4 })
    {
        const auto image = render (
            20, 20, [&] (juce::Graphics& g) { look.drawRotarySlider (g, 5, 5, size, size, 0.5f, 0.0f, pi, slider); });
        EXPECT_TRUE (getInkArea (image).isEmpty()) << size;
    }
}
} // namespace
} // namespace cv::varlo
