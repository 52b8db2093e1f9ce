#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::varlo
{
/** The ring of a rotary slider. Lengths are in logical pixels, angles in radians clockwise from the top. */
struct RotaryRing
{
    /** The square that the ring touches from inside; empty where there is no room for a ring. */
    juce::Rectangle<float> bounds;
    float thickness = 0.0f;

    /** From the centre to the ring's inner edge, and to the middle of its thickness. */
    float getInnerRadius() const noexcept { return bounds.getWidth() / 2.0f - thickness; }

    float getMiddleRadius() const noexcept { return getInnerRadius() + thickness / 2.0f; }

    /** The whole ring. */
    juce::Path makePath() const;

    /** The part of it between two angles, also backwards; without any length where they are the same. */
    juce::Path makeArc (float startAngle, float endAngle) const;

    enum class Cap
    {
        whole,
        lowerHalf, // of the smaller angles
        upperHalf
    };

    /** A rounded square as thick as the ring that sits on it at an angle, or one half of that. */
    juce::Path makeCap (float angle, Cap) const;
};

/** The ring in a slider's area: centred, two logical pixels from the edges. Any thread. */
RotaryRing getRotaryRing (juce::Rectangle<int> area) noexcept;

/** What a rotary slider looks like at the moment. Angles are in radians clockwise from the top. */
struct RotarySliderState
{
    float arcStartAngle = 0.0f; // where the value's arc begins
    float valueAngle = 0.0f;
    float rangeEndAngle = 0.0f;
    bool isEnabled = true;
    bool isHovered = false;
    juce::Point<int> shadowOffset;
    juce::Colour track; // of an enabled slider without the mouse on it
    juce::Colour thumb;
};

/** Reads a slider's state. Its property centred says where the arc begins. Message thread. */
RotarySliderState getRotarySliderState (juce::Slider&, float position, float rangeStartAngle, float rangeEndAngle);

/** The colours of ring and arc in that state: half transparent when disabled, brighter under the mouse. Any thread. */
juce::Colour getRotaryTrackColour (const RotarySliderState&) noexcept;
juce::Colour getRotaryThumbColour (const RotarySliderState&) noexcept;

/** Draws ring and arc; nothing where there is no room for a ring. Message thread. */
void paintRotarySlider (juce::Graphics&, const RotaryRing&, const RotarySliderState&);
} // namespace cv::varlo
