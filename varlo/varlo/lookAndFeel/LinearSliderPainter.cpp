#include "varlo/lookAndFeel/LinearSliderPainter.h"

#include "varlo/lookAndFeel/ControlState.h"

namespace cv::varlo
{
namespace
{
constexpr auto nearDotDarkening = 0.6f;
constexpr auto farDotDarkening = 0.3f;

juce::Rectangle<float> getDot (juce::Rectangle<float> cell)
{
    constexpr auto dotProportion = 0.8f;
    const auto diameter = dotProportion * cell.getHeight();
    return cell.withSizeKeepingCentre (diameter, diameter);
}

void fillBar (juce::Graphics& g, const RoundedBar& bar)
{
    g.fillRoundedRectangle (bar.area, bar.cornerSize);
}

/** Fills the groove and keeps what follows inside. */
void paintGroove (juce::Graphics& g, const RoundedBar& groove, juce::Colour colour)
{
    juce::Path path;
    path.addRoundedRectangle (groove.area, groove.cornerSize);
    g.setColour (colour);
    g.fillPath (path);
    g.reduceClipRegion (path);
}

void paintTwoValueBar (juce::Graphics& g, const RoundedBar& groove, const LinearSliderState& state, juce::Colour thumb)
{
    const auto bar = getTwoValueBar (groove, state.minPosition, state.maxPosition);
    fillBar (g, bar);

    if (! state.isHovered || ! hasRoomForDots (bar))
        return;

    const auto colours = getDotColours (bar, state.mousePosition, thumb);
    g.setColour (colours[0]);
    g.fillEllipse (getLeftDot (bar));
    g.setColour (colours[1]);
    g.fillEllipse (getRightDot (bar));
}

void paintHorizontalBar (juce::Graphics& g,
                         const RoundedBar& groove,
                         const LinearSliderState& state,
                         juce::Colour thumb)
{
    const auto bar = getHorizontalBar (groove, state.position);
    fillBar (g, bar);

    if (! state.isHovered || ! hasRoomForDots (bar))
        return;

    g.setColour (thumb.darker (nearDotDarkening));
    g.fillEllipse (getRightDot (bar));
}
} // namespace

RoundedBar getHorizontalGroove (juce::Rectangle<int> area) noexcept
{
    const auto height = (float) area.getHeight();
    const auto groove = area.toFloat().withTrimmedTop (0.25f * height).withHeight (0.5f * height);
    return { groove.getSmallestIntegerContainer().toFloat(), 0.2f * height };
}

RoundedBar getVerticalGroove (juce::Rectangle<int> area, bool hasTextBox) noexcept
{
    const auto width = (float) area.getWidth();
    const auto thickness = juce::jmax (width / (hasTextBox ? 11.0f : 3.5f), 1.0f);

    // At the middle of a column of pixels, so that a thin groove isn't smeared over two.
    const auto centre = area.toFloat().getCentreX() - (area.getWidth() % 2 == 0 ? 0.5f : 0.0f);
    const auto groove = area.toFloat().withX (centre - thickness / 2.0f).withWidth (thickness);
    return { groove.getSmallestIntegerContainer().toFloat(), 0.4f * thickness };
}

RoundedBar getHorizontalBar (const RoundedBar& groove, float position) noexcept
{
    const auto right = std::round (position);
    const auto left = juce::jmin (right, groove.area.getX());
    return { groove.area.withX (left).withWidth (juce::jmax (right - groove.area.getX(), 0.0f)), groove.cornerSize };
}

RoundedBar getVerticalBar (const RoundedBar& groove, float position) noexcept
{
    const auto top = std::round (position);
    return { groove.area.withY (top).withHeight (juce::jmax (groove.area.getBottom() - top, 0.0f)), groove.cornerSize };
}

RoundedBar getTwoValueBar (const RoundedBar& groove, float minPosition, float maxPosition) noexcept
{
    const auto left = std::round (minPosition);
    const auto right = std::round (maxPosition);
    const auto width = juce::jmax (right - left, 0.5f * groove.area.getHeight());
    return { groove.area.withX ((left + right - width) / 2.0f).withWidth (width), groove.cornerSize };
}

bool hasRoomForDots (const RoundedBar& bar) noexcept
{
    return bar.area.getWidth() >= 1.8f * bar.area.getHeight();
}

juce::Rectangle<float> getLeftDot (const RoundedBar& bar) noexcept
{
    return getDot (bar.area.withWidth (bar.area.getHeight()));
}

juce::Rectangle<float> getRightDot (const RoundedBar& bar) noexcept
{
    return getDot (bar.area.withLeft (bar.area.getRight() - bar.area.getHeight()));
}

std::array<juce::Colour, 2> getDotColours (const RoundedBar& bar,
                                           juce::Point<float> mousePosition,
                                           juce::Colour thumb) noexcept
{
    const auto distanceTo = [&] (juce::Rectangle<float> dot)
    { return dot.getCentre().getDistanceFrom (mousePosition); };
    const auto leftIsNearer = distanceTo (getLeftDot (bar)) < distanceTo (getRightDot (bar));

    return { thumb.darker (leftIsNearer ? nearDotDarkening : farDotDarkening),
             thumb.darker (leftIsNearer ? farDotDarkening : nearDotDarkening) };
}

void paintLinearSlider (juce::Graphics& g, juce::Rectangle<int> area, const LinearSliderState& state)
{
    const juce::Graphics::ScopedSaveState clipKeeper (g);
    const auto alpha = getControlAlpha (state.isEnabled);
    const auto track = (state.isHovered ? state.track.brighter (0.15f) : state.track).withMultipliedAlpha (alpha);
    const auto thumb = state.thumb.withMultipliedAlpha (alpha);
    const auto groove = state.isVertical ? getVerticalGroove (area, state.hasTextBox) : getHorizontalGroove (area);

    paintGroove (g, groove, track);
    g.setColour (thumb);

    if (state.isVertical)
        fillBar (g, getVerticalBar (groove, state.position));
    else if (state.hasTwoValues)
        paintTwoValueBar (g, groove, state, thumb);
    else
        paintHorizontalBar (g, groove, state, thumb);
}
} // namespace cv::varlo
