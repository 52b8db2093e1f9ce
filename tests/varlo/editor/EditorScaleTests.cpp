#include "support/TextSharpness.h"
#include "support/VarloEditorFixture.h"

#include <gtest/gtest.h>

namespace cv::varlo
{
namespace
{
using Area = juce::Rectangle<int>;

class VarloScaleTest : public test::VarloEditorFixture, public testing::WithParamInterface<float>
{
protected:
    VarloScaleTest()
    {
        find<BlinkingLed>().stopTimer();
        find<SpectrogramComponent>().stopTimer();
    }

    /** What a window of that many pixels to each logical one shows. */
    juce::Image draw (juce::Component& window, float pixelsPerUnit) const
    {
        return window.createComponentSnapshot (window.getLocalBounds(), true, pixelsPerUnit);
    }

    /** Where texts are, in logical pixels: captions, a value, a button and the bar. */
    std::vector<Area> getTextAreas() const
    {
        std::vector<Area> areas;

        for (auto* const component : std::initializer_list<juce::Component*> {
                 &findText ("Delay"), &findKnob ("Lowpass"), &find<TapButton>(), &find<pluginCore::PresetsBar>() })
            areas.push_back (editor->getLocalArea (component, component->getLocalBounds()));

        return areas;
    }

    void expectSharpTexts (const juce::Image& picture, const juce::Image& unscaled) const
    {
        for (const auto& area : getTextAreas())
            EXPECT_TRUE (test::isSharp (picture, unscaled, area, GetParam())) << area.toString();
    }
};

INSTANTIATE_TEST_SUITE_P (Scales, VarloScaleTest, testing::Values (1.25f, 1.5f, 2.0f));

TEST_P (VarloScaleTest, TextsAreDrawnInTheDesktopsPixels)
{
    expectSharpTexts (draw (*editor, GetParam()), draw (*editor, 1.0f));
}

TEST_P (VarloScaleTest, TextsAreDrawnInTheHostsPixels)
{
    const auto unscaled = draw (*editor, 1.0f);

    // As the plug-in's side of a host's window does it.
    juce::Component window;
    window.addAndMakeVisible (*editor);
    editor->setScaleFactor (GetParam());
    window.setSize (juce::roundToInt (GetParam() * 1050.0f), juce::roundToInt (GetParam() * 578.0f));

    EXPECT_EQ (editor->getWidth(), 1050);
    EXPECT_EQ (editor->getHeight(), 578);
    expectSharpTexts (draw (window, 1.0f), unscaled);
}
} // namespace
} // namespace cv::varlo
