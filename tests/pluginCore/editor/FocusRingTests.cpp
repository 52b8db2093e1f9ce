#include "pluginCore/editor/FocusRing.h"

#include "pluginCore/lookAndFeel/LookAndFeel.h"
#include "support/Keys.h"
#include "support/Mouse.h"
#include "support/Rendering.h"

#include <gtest/gtest.h>

namespace cv::pluginCore
{
namespace
{
using juce::KeyPress;
using test::pressKey;
using test::runMessageLoopUntil;

/** A window with two controls, a text that can be typed into and one that can't. */
class FocusRingTest : public testing::Test
{
protected:
    FocusRingTest()
    {
        juce::LookAndFeel::setDefaultLookAndFeel (&lookAndFeel);
        lookAndFeel.editorHeight = 600; // a frame of two pixels
        auto x = 10;

        for (auto* const child : std::initializer_list<juce::Component*> { &first, &second, &typed, &shown })
        {
            child->setBounds (std::exchange (x, x + 100), 10, 80, 40);
            window.addAndMakeVisible (child);
        }

        shown.setReadOnly (true);
        window.setSize (420, 60);
        window.addToDesktop (0);
        window.setVisible (true);
        ring.watchControls();
    }

    ~FocusRingTest() override { juce::LookAndFeel::setDefaultLookAndFeel (nullptr); }

    /** Away from all controls, so that none is drawn in another way for it. */
    void takeMouseAway() { test::sendMouse (window, { -50.0f, -50.0f }, false); }

    bool isAround (juce::Component* component)
    {
        return runMessageLoopUntil ([&] { return ring.getOwner() == component; });
    }

    /** Turns the message loop as long as a ring would take to show, had it been asked for. */
    bool staysAway()
    {
        test::runMessageLoopFor (100);
        return ring.getOwner() == nullptr;
    }

    LookAndFeel lookAndFeel;
    juce::Component window;
    juce::TextButton first { "first" };
    juce::TextButton second { "second" };
    juce::TextEditor typed;
    juce::TextEditor shown;
    FocusRing ring { window };
};

TEST_F (FocusRingTest, IsNotThereBeforeAKey)
{
    ASSERT_TRUE (test::giveKeyboardTo (first));
    EXPECT_TRUE (staysAway());
}

TEST_F (FocusRingTest, FollowsTheTabKey)
{
    ASSERT_TRUE (test::giveKeyboardTo (first));
    pressKey (window, KeyPress::tabKey);
    EXPECT_TRUE (isAround (&second));

    pressKey (window, KeyPress::tabKey, juce::ModifierKeys::shiftModifier);
    EXPECT_TRUE (isAround (&first));
}

TEST_F (FocusRingTest, ShowsWhereAKeyIsPressedAfterAClick)
{
    test::moveMouseTo (second);
    test::pressMouseOn (second);
    test::releaseMouseOn (second);
    ASSERT_TRUE (test::giveKeyboardTo (second));
    EXPECT_TRUE (staysAway());

    pressKey (window, KeyPress::upKey);
    EXPECT_TRUE (isAround (&second));
}

TEST_F (FocusRingTest, GoesWithThePressOfTheMouse)
{
    ASSERT_TRUE (test::giveKeyboardTo (first));
    pressKey (window, KeyPress::tabKey);
    ASSERT_TRUE (isAround (&second));

    test::moveMouseTo (first);
    EXPECT_EQ (ring.getOwner(), &second);
    test::pressMouseOn (first);
    EXPECT_EQ (ring.getOwner(), nullptr);
    test::releaseMouseOn (first);
    EXPECT_TRUE (staysAway());
}

TEST_F (FocusRingTest, KeysOfTheHostDontCallIt)
{
    ASSERT_TRUE (test::giveKeyboardTo (first));

    for (const auto key : { KeyPress::spaceKey, KeyPress::playKey, KeyPress::F1Key, (int) 'r' })
        EXPECT_FALSE (pressKey (window, key)) << key;

    EXPECT_TRUE (staysAway());
}

TEST_F (FocusRingTest, IsNotAroundATextThatIsTypedInto)
{
    ASSERT_TRUE (test::giveKeyboardTo (second));
    pressKey (window, KeyPress::tabKey);
    ASSERT_TRUE (typed.hasKeyboardFocus (false));
    EXPECT_TRUE (staysAway());

    pressKey (window, KeyPress::tabKey);
    EXPECT_TRUE (isAround (&shown));
}

TEST_F (FocusRingTest, GoesWithItsControl)
{
    ASSERT_TRUE (test::giveKeyboardTo (first));
    pressKey (window, KeyPress::tabKey);
    ASSERT_TRUE (isAround (&second));

    second.setVisible (false);
    EXPECT_TRUE (runMessageLoopUntil ([this] { return ring.getOwner() != &second; }));
}

TEST_F (FocusRingTest, IsAFrameInTheColourOfTextsThatGoesWithoutATrace)
{
    ASSERT_TRUE (test::giveKeyboardTo (second));
    takeMouseAway();
    const auto without = test::render (window);
    constexpr auto bright = 0.95f; // the frame is white
    ASSERT_LT (without.getPixelAt (second.getX(), second.getBounds().getCentreY()).getBrightness(), bright);

    pressKey (window, KeyPress::upKey);
    ASSERT_TRUE (isAround (&second));
    const auto with = test::render (window);

    for (const auto x : { second.getX(), second.getRight() - 1 })
        EXPECT_GT (with.getPixelAt (x, second.getBounds().getCentreY()).getBrightness(), bright) << x;

    for (const auto y : { second.getY(), second.getBottom() - 1 })
        EXPECT_GT (with.getPixelAt (second.getBounds().getCentreX(), y).getBrightness(), bright) << y;

    auto changesElsewhere = 0;

    for (auto x = 0; x < with.getWidth(); ++x)
        for (auto y = 0; y < with.getHeight(); ++y)
            if (with.getPixelAt (x, y) != without.getPixelAt (x, y) && ! second.getBounds().contains (x, y))
                ++changesElsewhere;

    EXPECT_EQ (changesElsewhere, 0);

    test::pressMouseOn (first);
    EXPECT_EQ (ring.getOwner(), nullptr);
    test::releaseMouseOn (first);
    takeMouseAway();

    ASSERT_TRUE (test::giveKeyboardTo (second));
    EXPECT_TRUE (runMessageLoopUntil ([&] { return test::areSame (test::render (window), without); }));
}
} // namespace
} // namespace cv::pluginCore
