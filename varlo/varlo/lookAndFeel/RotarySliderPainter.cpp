#include "varlo/lookAndFeel/RotarySliderPainter.h"

#include "varlo/lookAndFeel/ControlState.h"
#include "varlo/lookAndFeel/Markers.h"

namespace cv::varlo
{
namespace
{
float getArcStartAngle (juce::Slider& slider, float rangeStartAngle, float rangeEndAngle)
{
    if (! (bool) slider.getProperties()[properties::centred] || ! slider.isDoubleClickReturnEnabled())
        return rangeStartAngle;

    const auto centre = slider.valueToProportionOfLength (slider.getDoubleClickReturnValue());
    return rangeStartAngle + (float) centre * (rangeEndAngle - rangeStartAngle);
}

/** What isn't lit darkens towards the value under the mouse. */
void setRingFill (juce::Graphics& g, const RotaryRing& ring, const RotarySliderState& state)
{
    constexpr auto darkening = 0.3f;

    const auto track = getRotaryTrackColour (state);

    if (! state.isHovered || state.rangeEndAngle <= state.valueAngle)
    {
        g.setColour (track);
        return;
    }

    const auto pointAt = [&] (float angle)
    { return ring.bounds.getCentre().getPointOnCircumference (ring.getInnerRadius(), angle); };

    g.setGradientFill (juce::ColourGradient (track, pointAt (state.rangeEndAngle),
                                             track.interpolatedWith (juce::Colours::black, darkening),
                                             pointAt (state.valueAngle), false));
}
} // namespace

juce::Path RotaryRing::makePath() const
{
    return makeArc (0.0f, juce::MathConstants<float>::twoPi);
}

juce::Path RotaryRing::makeArc (float startAngle, float endAngle) const
{
    const auto innerProportion = getInnerRadius() / (getInnerRadius() + thickness);

    juce::Path arc;
    arc.addPieSegment (bounds, startAngle, endAngle, innerProportion);
    arc.closeSubPath();
    return arc;
}

juce::Path RotaryRing::makeCap (float angle, Cap cap) const
{
    const auto half = thickness / 2.0f;
    const auto cornerSize = 0.4f * thickness;
    const auto hasLowerHalf = cap != Cap::upperHalf;
    const auto hasUpperHalf = cap != Cap::lowerHalf;

    juce::Path path;
    path.addRoundedRectangle (hasLowerHalf ? -half : 0.0f, -half, cap == Cap::whole ? thickness : half, thickness,
                              cornerSize, cornerSize, hasLowerHalf, hasUpperHalf, hasLowerHalf, hasUpperHalf);
    path.applyTransform (juce::AffineTransform::rotation (angle).translated (
        bounds.getCentre().getPointOnCircumference (getMiddleRadius(), angle)));
    return path;
}

RotaryRing getRotaryRing (juce::Rectangle<int> area) noexcept
{
    constexpr auto margin = 2;
    constexpr auto thicknessProportion = 0.08f;

    const auto room = area.reduced (margin);
    const auto diameter = (float) juce::jmin (room.getWidth(), room.getHeight());
    return { area.toFloat().withSizeKeepingCentre (diameter, diameter), thicknessProportion * diameter };
}

RotarySliderState getRotarySliderState (juce::Slider& slider,
                                        float position,
                                        float rangeStartAngle,
                                        float rangeEndAngle)
{
    return { .arcStartAngle = getArcStartAngle (slider, rangeStartAngle, rangeEndAngle),
             .valueAngle = rangeStartAngle + position * (rangeEndAngle - rangeStartAngle),
             .rangeEndAngle = rangeEndAngle,
             .isEnabled = slider.isEnabled(),
             .isHovered = isHovered (slider),
             .shadowOffset = shadowOffsetFor (slider),
             .track = slider.findColour (juce::Slider::trackColourId, true),
             .thumb = slider.findColour (juce::Slider::thumbColourId, true) };
}

juce::Colour getRotaryTrackColour (const RotarySliderState& state) noexcept
{
    const auto colour = state.isHovered ? state.track.brighter (0.15f) : state.track;
    return colour.withMultipliedAlpha (getControlAlpha (state.isEnabled));
}

juce::Colour getRotaryThumbColour (const RotarySliderState& state) noexcept
{
    auto colour = state.isEnabled ? state.thumb : state.thumb.darker (0.4f);

    if (state.isHovered)
        colour = colour.brighter (0.06f);

    return colour.withMultipliedAlpha (getControlAlpha (state.isEnabled));
}

void paintRotarySlider (juce::Graphics& g, const RotaryRing& ring, const RotarySliderState& state)
{
    constexpr auto shadowAlpha = 0.2f;
    constexpr auto shadowRadius = 1;

    if (ring.bounds.isEmpty())
        return;

    const auto ringPath = ring.makePath();
    const auto shadow = juce::Colours::black.withAlpha (shadowAlpha * getControlAlpha (state.isEnabled));
    juce::DropShadow (shadow, shadowRadius, state.shadowOffset).drawForPath (g, ringPath);
    setRingFill (g, ring, state);
    g.fillPath (ringPath);

    // A translucent cap must not lie on the arc, or it would show there.
    using Cap = RotaryRing::Cap;
    const auto thumb = getRotaryThumbColour (state);
    g.setColour (thumb);
    g.fillPath (ring.makeArc (state.arcStartAngle, state.valueAngle));
    g.fillPath (ring.makeCap (state.arcStartAngle, thumb.isOpaque() ? Cap::whole : Cap::lowerHalf));
    g.fillPath (ring.makeCap (state.valueAngle, thumb.isOpaque() ? Cap::whole : Cap::upperHalf));
}
} // namespace cv::varlo
