#include "pluginCore/editor/WindowFrontListener.h"

#include <gtest/gtest.h>

namespace cv::pluginCore
{
namespace
{
class WindowFrontListenerTest : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_FALSE (juce::Desktop::getInstance().getDisplays().displays.isEmpty()) << "This needs a display.";

        for (auto* window : { &first, &second })
        {
            window->setSize (80, 60);
            window->addToDesktop (0);
        }
    }

    /** How often it is told when this window comes to the front, as its system would say. */
    int bringToFront (juce::Component& window)
    {
        const auto before = numTold;
        window.getPeer()->handleBroughtToFront();
        return numTold - before;
    }

    juce::Component first, second;
    juce::Component panel;
    juce::Component component;
    int numTold = 0;
    const WindowFrontListener listener { component, [this] { ++numTold; } };
};

TEST_F (WindowFrontListenerTest, HearsOfTheWindowThatTheComponentLiesIn)
{
    EXPECT_EQ (bringToFront (first), 0);

    panel.addAndMakeVisible (component);
    first.addAndMakeVisible (panel);
    EXPECT_EQ (bringToFront (first), 1);
    EXPECT_EQ (bringToFront (second), 0);

    second.addAndMakeVisible (panel);
    EXPECT_EQ (bringToFront (first), 0);
    EXPECT_EQ (bringToFront (second), 1);

    panel.removeChildComponent (&component);
    EXPECT_EQ (bringToFront (second), 0);
}

TEST_F (WindowFrontListenerTest, AComponentMayBeItsOwnWindow)
{
    component.setSize (40, 30);
    component.addToDesktop (0);
    EXPECT_EQ (bringToFront (component), 1);

    first.addAndMakeVisible (component);
    EXPECT_EQ (bringToFront (first), 1);

    component.addToDesktop (0);
    EXPECT_EQ (bringToFront (first), 0);
    EXPECT_EQ (bringToFront (component), 1);
}

TEST_F (WindowFrontListenerTest, AComponentThatComesToTheFrontOfItsWindowIsNoMatter)
{
    juce::Component other;
    first.addAndMakeVisible (component);
    first.addAndMakeVisible (other);
    component.toFront (true);
    EXPECT_EQ (numTold, 0);
}
} // namespace
} // namespace cv::pluginCore
