#include "varlo/lookAndFeel/ControlState.h"

#include "support/Mouse.h"

#include <gtest/gtest.h>

namespace cv::varlo
{
namespace
{
using Keys = juce::ModifierKeys;
using Offset = juce::Point<int>;

constexpr Offset flat, atRest (1, 1), lifted (1, 2);

struct ShadowCase
{
    bool isMouseOver;
    bool isMouseDown;
    int modifiers;
    Offset expected;
};

const ShadowCase shadowCases[] {
    { false, false, Keys::noModifiers, atRest },
    { true, false, Keys::noModifiers, lifted },
    { true, true, Keys::leftButtonModifier, flat },
    { false, true, Keys::leftButtonModifier, flat },
    { true, true, Keys::middleButtonModifier, flat },

    { true, false, Keys::shiftModifier, lifted },
    { true, false, Keys::altModifier, lifted },
    { true, true, Keys::shiftModifier | Keys::altModifier, flat },
    { false, false, Keys::shiftModifier, atRest },

    { true, false, Keys::rightButtonModifier, atRest },
    { true, true, Keys::rightButtonModifier, atRest },
    { true, true, Keys::leftButtonModifier | Keys::rightButtonModifier, atRest },
    { true, false, Keys::ctrlModifier, atRest },
    { true, true, Keys::ctrlModifier | Keys::leftButtonModifier, atRest },
    { true, true, Keys::ctrlModifier | Keys::altModifier | Keys::commandModifier, atRest },
    { true, false, Keys::ctrlModifier | Keys::altModifier | Keys::commandModifier, atRest },
};

TEST (ShadowOffsetTest, FollowsTheMouseAndTheModifiers)
{
    for (const auto& [isMouseOver, isMouseDown, modifiers, expected] : shadowCases)
        EXPECT_EQ (getShadowOffset ({ true, isMouseOver, isMouseDown, modifiers }), expected)
            << isMouseOver << isMouseDown << " " << modifiers;
}

TEST (ShadowOffsetTest, DisabledControlsLieFlatWhateverTheMouseDoes)
{
    for (const auto& shadow : shadowCases)
        EXPECT_EQ (getShadowOffset ({ false, shadow.isMouseOver, shadow.isMouseDown, shadow.modifiers }), flat);
}

/** A control in a window, with a part of its own, and the window's rest. */
class ControlUnderMouseTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_FALSE (juce::Desktop::getInstance().getDisplays().displays.isEmpty()) << "This needs a display.";

        window.setBounds (20, 20, 200, 200);
        control.setBounds (0, 0, 100, 100);
        part.setBounds (50, 50, 50, 50);
        window.addAndMakeVisible (control);
        control.addAndMakeVisible (part);
        window.addToDesktop (0);
        window.setVisible (true);
    }

    void TearDown() override { test::sendMouse (window, { 150.0f, 150.0f }, false); }

    juce::Component window, control, part;
};

TEST_F (ControlUnderMouseTest, ShadowFollowsTheMouse)
{
    test::sendMouse (window, { 150.0f, 150.0f }, false);
    EXPECT_EQ (shadowOffsetFor (control), atRest);

    test::sendMouse (window, { 20.0f, 20.0f }, false);
    EXPECT_EQ (shadowOffsetFor (control), lifted);

    test::sendMouse (window, { 20.0f, 20.0f }, true);
    EXPECT_EQ (shadowOffsetFor (control), flat);

    test::sendMouse (window, { 20.0f, 20.0f }, false);
    EXPECT_EQ (shadowOffsetFor (control), lifted);
}

TEST_F (ControlUnderMouseTest, ItsPartsCount)
{
    test::moveMouseTo (part);
    EXPECT_EQ (shadowOffsetFor (control), lifted);
    EXPECT_TRUE (isHovered (control));

    test::pressMouseOn (part);
    EXPECT_EQ (shadowOffsetFor (control), flat);
}

TEST_F (ControlUnderMouseTest, ADisabledParentDisablesIt)
{
    test::moveMouseTo (part);
    window.setEnabled (false);
    EXPECT_EQ (shadowOffsetFor (control), flat);
    EXPECT_FALSE (isHovered (control));
}
} // namespace
} // namespace cv::varlo
