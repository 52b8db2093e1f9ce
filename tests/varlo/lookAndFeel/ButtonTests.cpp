#include "varlo/lookAndFeel/ButtonPainter.h"

#include "pluginCore/editor/DefaultLookAndFeel.h"
#include "pluginCore/lookAndFeel/Markers.h"
#include "support/FindComponent.h"
#include "support/PresetSandbox.h"
#include "support/Rendering.h"
#include "support/TemporaryHome.h"
#include "support/TestProduct.h"
#include "varlo/lookAndFeel/PluginLookAndFeel.h"

#include <gtest/gtest.h>

namespace cv::varlo
{
namespace
{
using test::areSame;
using test::getGreatestAlpha;
using test::getInkArea;
using test::render;
using Area = juce::Rectangle<int>;

const juce::Colour own (0xff1e9d88), groove (0xff204060);

TEST (ButtonShapeTest, IsRoundedAndTwoAndAHalfUnitsInside)
{
    EXPECT_EQ (makeButtonShape (100, 40).getBounds(), juce::Rectangle (2.5f, 2.5f, 95.0f, 35.0f));
    EXPECT_EQ (makeButtonShape (10, 10).getBounds(), juce::Rectangle (2.5f, 2.5f, 5.0f, 5.0f));
    EXPECT_TRUE (makeButtonShape (3, 3).getBounds().isEmpty());
    EXPECT_TRUE (makeButtonShape (0, 0).getBounds().isEmpty());

    // Corners of 6 logical pixels, and of a quarter of a low button's height.
    EXPECT_FALSE (makeButtonShape (100, 40).contains (3.5f, 3.5f));
    EXPECT_TRUE (makeButtonShape (100, 40).contains (8.5f, 2.7f));
    EXPECT_FALSE (makeButtonShape (100, 40).contains (4.5f, 2.7f));
    EXPECT_TRUE (makeButtonShape (100, 10).contains (4.2f, 2.7f));
}

TEST (ButtonFillTest, IsLitWhenOffAndTheOtherWayRoundInThePresetsBar)
{
    ButtonState off, down, toggled;
    down.isDown = true;
    toggled.isToggled = true;

    EXPECT_EQ (getButtonFill (off, own, groove), own);
    EXPECT_EQ (getButtonFill (down, own, groove), groove);
    EXPECT_EQ (getButtonFill (toggled, own, groove), groove);

    off.isInPresetsBar = down.isInPresetsBar = toggled.isInPresetsBar = true;
    EXPECT_EQ (getButtonFill (off, own, groove), groove);
    EXPECT_EQ (getButtonFill (down, own, groove), own);
    EXPECT_EQ (getButtonFill (toggled, own, groove), own);
}

TEST (ButtonFillTest, IsHalfTransparentWhenDisabledAndDropsItsOwnAlpha)
{
    ButtonState state;
    EXPECT_EQ (getButtonFill (state, own.withAlpha (0.2f), groove), own);

    state.isEnabled = false;
    EXPECT_EQ (getButtonFill (state, own.withAlpha (0.2f), groove), own.darker (0.2f).withAlpha (0.5f));

    state.isToggled = true;
    EXPECT_EQ (getButtonFill (state, own, groove.withAlpha (0.5f)).getARGB(), 0x40204060u);
}

TEST (ButtonFillTest, DoesntFollowTheMouse)
{
    ButtonState state;
    state.isHighlighted = true;
    EXPECT_EQ (getButtonFill (state, own, groove), own);
}

TEST (CaptionTest, BeginsWithACapital)
{
    EXPECT_EQ (getShownCaption ("save as"), "Save as");
    EXPECT_EQ (getShownCaption ("Save"), "Save");
    const juce::String japanese (juce::CharPointer_UTF8 ("\xe9\x9f\xb3\xe9\x87\x8f"));
    EXPECT_EQ (getShownCaption (japanese), japanese);
    EXPECT_EQ (getShownCaption ({}), juce::String());
}

TEST (CaptionTest, HasMarginsThatFollowTheHeight)
{
    EXPECT_EQ (getCaptionArea (100, 40, "Save"), Area (8, 4, 84, 32));
    EXPECT_EQ (getCaptionArea (20, 10, "Save"), Area (4, 3, 12, 4));
    EXPECT_EQ (getCaptionArea (10, 4, "Save"), Area (3, 1, 4, 2));
    EXPECT_EQ (getCaptionArea (5, 1, {}), Area (2, 0, 1, 1));
    EXPECT_EQ (getCaptionArea (1, 40, "Save"), Area (8, 4, 0, 32));
}

TEST (CaptionTest, OfTheTapButtonHasNoSideMarginAndIsAUnitHigher)
{
    EXPECT_EQ (getCaptionArea (100, 40, "Tap"), Area (0, 3, 100, 32));
    EXPECT_EQ (getCaptionArea (100, 40, "Tap tempo"), Area (0, 3, 100, 32));
    EXPECT_EQ (getCaptionArea (20, 10, "Tap"), Area (0, 2, 20, 4));
    EXPECT_EQ (getCaptionArea (100, 40, "tap"), Area (8, 4, 84, 32));
    EXPECT_EQ (getCaptionArea (100, 40, "The Tap"), Area (8, 4, 84, 32));
}

TEST (CaptionColourTest, IsTheOneForOnWhileTheButtonIsOff)
{
    const juce::Colour inBar (0xffcfcfcf), onLit (0xff0f0f0f), onDark (0xff1e9d88);
    const auto colourOf = [&] (const ButtonState& state) { return getCaptionColour (state, inBar, onLit, onDark); };

    ButtonState state;
    EXPECT_EQ (colourOf (state), onLit);
    state.isHighlighted = true;
    EXPECT_EQ (colourOf (state), onLit);

    state.isDown = true;
    EXPECT_EQ (colourOf (state), onDark);
    state.isHighlighted = false;
    EXPECT_EQ (colourOf (state), onDark.darker (0.1f));

    state.isDown = false;
    state.isToggled = true;
    EXPECT_EQ (colourOf (state), onDark.darker (0.1f));
    state.isEnabled = false;
    EXPECT_EQ (colourOf (state), onDark.darker (0.4f));
    state.isHighlighted = true;
    EXPECT_EQ (colourOf (state), onDark.darker (0.4f));

    state.isInPresetsBar = true;
    EXPECT_EQ (colourOf (state), inBar);
}

class ButtonTest : public testing::Test
{
protected:
    ButtonTest()
    {
        look.setColour (juce::Slider::trackColourId, groove);
        button.setLookAndFeel (&look);
        button.setSize (100, 40);
    }

    ~ButtonTest() override { button.setLookAndFeel (nullptr); }

    juce::Image drawCaption (const juce::String& text, bool isHighlighted = false, bool isDown = false)
    {
        button.setButtonText (text);
        return render (100, 40, [&] (juce::Graphics& g) { look.drawButtonText (g, button, isHighlighted, isDown); });
    }

    /** The caption as a plain text in that colour, on one in the other colour. */
    juce::Image drawText (const juce::String& text, juce::Colour upper, juce::Colour lower)
    {
        return render (100, 40,
                       [&] (juce::Graphics& g)
                       {
                           g.setFont (look.mediumFont.withHeight (24.0f));
                           for (const auto colour : { lower, upper })
                           {
                               g.setColour (colour);
                               g.drawFittedText (text, { 8, 4, 84, 32 }, juce::Justification::centred, 2);
                           }
                       });
    }

    static juce::Image drawShape (juce::Point<int> shadowOffset, bool isEnabled = true)
    {
        return render (100, 40,
                       [&] (juce::Graphics& g)
                       { paintButtonShape (g, makeButtonShape (80, 30), isEnabled, own, shadowOffset); });
    }

    PluginLookAndFeel look;
    juce::TextButton button;
};

TEST_F (ButtonTest, FontIsSixTenthsOfTheHeightWhateverTheWidth)
{
    EXPECT_FLOAT_EQ (look.getTextButtonFont (button, 40).getHeight(), 24.0f);
    EXPECT_EQ (look.getTextButtonFont (button, 40).getTypefacePtr(), look.mediumFont.getTypefacePtr());

    button.setSize (5, 40);
    button.setButtonText ("A long caption");
    EXPECT_FLOAT_EQ (look.getTextButtonFont (button, 40).getHeight(), 24.0f);
}

TEST_F (ButtonTest, ShapeIsFilledAndShadowFollowsItsOffset)
{
    const auto pressed = drawShape ({});
    EXPECT_EQ (pressed.getPixelAt (40, 15), own);
    EXPECT_EQ (test::getAreaOf (pressed, own), Area (3, 3, 74, 24));

    const auto area = getInkArea (pressed);
    EXPECT_EQ (area.getRight(), getInkArea (drawShape ({ 1, 1 })).getRight() - 1);
    EXPECT_EQ (area.getBottom(), getInkArea (drawShape ({ 1, 1 })).getBottom() - 1);
    EXPECT_EQ (area.getRight(), getInkArea (drawShape ({ 1, 2 })).getRight() - 1);
    EXPECT_EQ (area.getBottom(), getInkArea (drawShape ({ 1, 2 })).getBottom() - 2);

    // Below the shape lies nothing but the shadow, half as strong when disabled.
    const auto strong = getGreatestAlpha (drawShape ({ 1, 2 }), { 40, 28, 1, 10 });
    EXPECT_GT (strong, 80);
    EXPECT_LE (strong, 128);
    EXPECT_NEAR (getGreatestAlpha (drawShape ({ 1, 2 }, false), { 40, 28, 1, 10 }), strong / 2.0, 1.0);
}

TEST_F (ButtonTest, IsDrawnAsItStands)
{
    const auto draw = [&] (bool isDown) {
        return render (100, 40, [&] (juce::Graphics& g) { look.drawButtonBackground (g, button, own, false, isDown); });
    };

    EXPECT_EQ (draw (false).getPixelAt (50, 20), own);
    EXPECT_EQ (draw (true).getPixelAt (50, 20), groove);

    button.setToggleState (true, juce::dontSendNotification);
    EXPECT_EQ (draw (false).getPixelAt (50, 20), groove);

    const auto atRest = render (100, 40,
                                [&] (juce::Graphics& g) {
                                    paintButtonShape (g, makeButtonShape (100, 40), true, groove, { 1, 1 });
                                });
    EXPECT_TRUE (areSame (draw (false), atRest));
}

TEST_F (ButtonTest, CaptionOfAnOffButtonIsDarkAndBolder)
{
    const auto edge = juce::Colours::black.withAlpha ((juce::uint8) 89);
    const auto dark = look.findColour (juce::TextButton::textColourOnId);

    EXPECT_TRUE (areSame (drawCaption ("save"), drawText ("Save", dark, edge)));
    EXPECT_FALSE (areSame (drawCaption ("save"), drawText ("Save", dark, juce::Colours::transparentBlack)));
}

TEST_F (ButtonTest, CaptionOfAToggledButtonIsPlainUntilTheMouseIsOnIt)
{
    const auto edge = juce::Colours::black.withAlpha ((juce::uint8) 89);
    const auto lit = look.findColour (juce::TextButton::textColourOffId);
    button.setToggleState (true, juce::dontSendNotification);

    EXPECT_TRUE (areSame (drawCaption ("Save"), drawText ("Save", lit.darker (0.1f), juce::Colours::transparentBlack)));
    EXPECT_TRUE (areSame (drawCaption ("Save", true), drawText ("Save", lit, edge)));
}

TEST_F (ButtonTest, DisabledCaptionIsHalfTransparent)
{
    button.setEnabled (false);
    const auto dark = look.findColour (juce::TextButton::textColourOnId);
    const auto edge = juce::Colours::black.withAlpha ((juce::uint8) 44);
    EXPECT_TRUE (areSame (drawCaption ("Save"), drawText ("Save", dark.withAlpha (0.5f), edge)));
}

TEST_F (ButtonTest, TapCaptionIsAPixelHigherThanOthers)
{
    const auto tap = getInkArea (drawCaption ("Tap"));
    const auto other = getInkArea (drawCaption ("Top"));
    EXPECT_EQ (tap.getY(), other.getY() - 1);
    EXPECT_EQ (tap.getBottom(), other.getBottom() - 1);
}

TEST_F (ButtonTest, CaptionStandsAtTheLeftOnDemand)
{
    const auto centred = getInkArea (drawCaption ("I"));
    EXPECT_NEAR (centred.toFloat().getCentreX(), 50.0f, 1.0f);

    button.getProperties().set ("JustificationLeft", true);
    EXPECT_NEAR (getInkArea (drawCaption ("I")).getX(), 8, 4);

    button.getProperties().set ("JustificationLeft", false);
    EXPECT_EQ (getInkArea (drawCaption ("I")), centred);
}

TEST_F (ButtonTest, EmptyCaptionIsDrawnInAnySize)
{
    EXPECT_TRUE (getInkArea (drawCaption ({})).isEmpty());

    for (const auto size : { 0, 1, 2, 5 })
    {
        button.setSize (size, size);
        EXPECT_TRUE (getInkArea (drawCaption ({})).isEmpty());
    }
}

TEST (PresetsBarButtonTest, IsKnownByTheMarkerOfWhatItLiesIn)
{
    juce::Component bar;
    juce::TextButton button;
    bar.addAndMakeVisible (button);
    EXPECT_FALSE (getButtonState (button, false, false).isInPresetsBar);

    bar.getProperties().set (pluginCore::markers::presetsBar, true);
    EXPECT_TRUE (getButtonState (button, false, false).isInPresetsBar);
}

TEST (PresetsBarButtonTest, IsDarkWithALightCaptionUntilItIsOn)
{
    const pluginCore::DefaultLookAndFeel<PluginLookAndFeel> defaultLook;
    auto& look = juce::LookAndFeel::getDefaultLookAndFeel();
    look.setColour (juce::Slider::trackColourId, groove);
    look.setColour (juce::TextButton::buttonOnColourId, own);

    const test::TemporaryHome home;
    const test::PresetSandbox sandbox;
    test::TestProduct product (sandbox.getLocations());
    pluginCore::PresetsBar bar (product.getPresetsManager());
    bar.setSize (300, 40);
    auto& button = *test::findComponent<juce::TextButton> (bar);

    const auto off = render (button);
    EXPECT_EQ (off.getPixelAt (10, 20), groove);
    EXPECT_FALSE (test::getTextArea (off, look.findColour (juce::Label::textColourId)).isEmpty());

    button.setToggleState (true, juce::dontSendNotification);
    EXPECT_EQ (render (button).getPixelAt (10, 20), own);
}
} // namespace
} // namespace cv::varlo
