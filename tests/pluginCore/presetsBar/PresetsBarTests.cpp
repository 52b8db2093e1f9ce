#include "pluginCore/presetsBar/PresetsBar.h"
#include "support/MessageLoop.h"
#include "support/PresetsBarFixture.h"

#include <thread>

namespace cv::pluginCore
{
namespace
{
using test::FrameworkLookAndFeel;
using test::runMessageLoopUntil;

class PresetsBarTest : public test::PresetsBarFixture
{
protected:
    /** Files a and b in the user's bank, c in the factory's, d in the designers'. */
    void writeFourPresets()
    {
        writePreset (userFolder, "a.test", 1.0f);
        writePreset (userFolder, "b.test", 2.0f);
        writePreset (factoryFolder, "c.test", 3.0f);
        writePreset (designerFolder, "d.test", 4.0f);
    }
};

TEST_F (PresetsBarTest, ANewInstanceHasNoPreset)
{
    EXPECT_EQ (getText(), "Presets...");
    EXPECT_EQ (presetsButton().getName(), "Presets...");
    EXPECT_EQ (previousButton().getName(), "");
    EXPECT_TRUE (presetsButton().getProperties()["PresetsButton"]);
    EXPECT_TRUE (getBar().isOpaque());
    EXPECT_TRUE (presetsButton().getTriggeredOnMouseDown());
    EXPECT_FALSE (nextButton().getTriggeredOnMouseDown());
}

TEST_F (PresetsBarTest, ABarThatOpensLaterShowsThePreset)
{
    presets.loadPreset (writePreset (userFolder, "Echo.test"));
    EXPECT_EQ (presetsButton().getButtonText(), "Presets...");
    EXPECT_TRUE (runMessageLoopUntil ([this] { return presetsButton().getButtonText() == "Echo"; }));
}

TEST_F (PresetsBarTest, ShowsAnOddNameWithoutWhatCannotBeShaped)
{
    presets.loadPreset (writePreset (userFolder, juce::String::fromUTF8 ("O\x1c"
                                                                         "d\xcc\x81\nd.test")));
    EXPECT_EQ (getText(), "Od d");

    product.set ("level", 10.0f);
    EXPECT_EQ (getText(), "Od d*");
}

TEST_F (PresetsBarTest, FollowsTheStoreThroughTheMessageLoop)
{
    const auto file = writePreset (userFolder, "Echo.test", 10.0f);
    EXPECT_EQ (getText(), "Presets...");

    presets.loadPreset (file);
    EXPECT_EQ (presetsButton().getButtonText(), "Presets...");
    EXPECT_TRUE (runMessageLoopUntil ([this] { return presetsButton().getButtonText() == "Echo"; }));

    product.set ("level", 20.0f);
    EXPECT_TRUE (runMessageLoopUntil ([this] { return presetsButton().getButtonText() == "Echo*"; }));

    presets.savePreset (file, false);
    EXPECT_TRUE (runMessageLoopUntil ([this] { return presetsButton().getButtonText() == "Echo"; }));
}

TEST_F (PresetsBarTest, WithoutAPresetAChangeIsNotShown)
{
    getText();
    product.set ("level", 20.0f);
    EXPECT_TRUE (presets.isDirty());
    EXPECT_TRUE (getBar().isUpdatePending());
    EXPECT_EQ (getText(), "Presets...");
}

TEST_F (PresetsBarTest, ManyNotificationsFromAnotherThreadAreOneUpdate)
{
    presets.loadPreset (writePreset (userFolder, "Echo.test"));
    ASSERT_EQ (getText(), "Echo");

    std::thread other (
        [this]
        {
            for (auto i = 0; i <= 10000; ++i)
                presets.setDirty (i % 2 == 0);
        });
    other.join();

    EXPECT_EQ (presetsButton().getButtonText(), "Echo");
    EXPECT_TRUE (getBar().isUpdatePending());
    getBar().handleUpdateNowIfNeeded();
    EXPECT_FALSE (getBar().isUpdatePending());
    EXPECT_EQ (presetsButton().getButtonText(), "Echo*");
}

TEST_F (PresetsBarTest, AnUpdateOnItsWayEndsWithTheBar)
{
    getBar();
    presets.loadPreset (writePreset (userFolder, "Echo.test"));
    ASSERT_TRUE (getBar().isUpdatePending());
    bar.reset();
    test::runMessageLoopFor (20);

    product.set ("level", 7.0f);
    EXPECT_EQ (getText(), "Echo*");
}

TEST_F (PresetsBarTest, ArrowsWalkTheBanksAsOneRing)
{
    writeFourPresets();

    for (const auto* const name : { "a", "b", "c", "d", "a", "b" })
        EXPECT_EQ (click (nextButton()), name);

    for (const auto* const name : { "a", "d", "c", "b", "a", "d" })
        EXPECT_EQ (click (previousButton()), name);

    EXPECT_FLOAT_EQ (product.get ("level"), 4.0f);
    EXPECT_EQ (getText(), "d");
}

TEST_F (PresetsBarTest, BothArrowsBeginAtTheFirst)
{
    writeFourPresets();
    const auto init = writePreset (factoryFolder, "Init.test");
    const auto outside = writePreset (sandbox.getFile ("outside"), "x.test");

    for (auto* const arrow : { &previousButton(), &nextButton() })
    {
        for (const auto& start : { juce::File(), init, outside })
        {
            presets.setCurrentPresetFile (start);
            EXPECT_EQ (click (*arrow), "a") << start.getFullPathName();
        }
    }
}

TEST_F (PresetsBarTest, ArrowsNeverReachInit)
{
    writePreset (factoryFolder, "A.test");
    writePreset (factoryFolder, "Init.test");
    writePreset (factoryFolder, "Z.test");

    for (const auto* const name : { "A", "Z", "A", "Z" })
        EXPECT_EQ (click (nextButton()), name);
}

TEST_F (PresetsBarTest, ArrowsWithoutPresetsDoNothing)
{
    product.set ("level", 20.0f);
    EXPECT_EQ (click (nextButton()), "");
    EXPECT_EQ (click (previousButton()), "");
    EXPECT_TRUE (presets.isDirty());
}

TEST_F (PresetsBarTest, ArrowsReloadAnOnlyPreset)
{
    presets.loadPreset (writePreset (designerFolder, "only.test", 30.0f));

    for (auto* const arrow : { &previousButton(), &nextButton() })
    {
        product.set ("level", 1.0f);
        EXPECT_EQ (click (*arrow), "only");
        EXPECT_FLOAT_EQ (product.get ("level"), 30.0f);
        EXPECT_FALSE (presets.isDirty());
    }
}

TEST_F (PresetsBarTest, ArrowsStayBeforeAPresetThatHasVanished)
{
    writeFourPresets();
    EXPECT_EQ (click (nextButton()), "a");
    ASSERT_TRUE (userFolder.getChildFile ("b.test").deleteFile());

    EXPECT_EQ (click (nextButton()), "a");
    EXPECT_EQ (click (nextButton()), "a");
    EXPECT_EQ (click (previousButton()), "d");
}

TEST_F (PresetsBarTest, ArrowsKnowTheListAsItWas)
{
    writeFourPresets();
    getBar();
    const auto added = writePreset (userFolder, "aa.test");
    EXPECT_EQ (click (nextButton()), "a");
    EXPECT_EQ (click (nextButton()), "b");

    presets.savePreset (added, true);
    EXPECT_EQ (getText(), "aa");
    EXPECT_EQ (click (nextButton()), "a");
}

struct Layout
{
    int width, height;
    juce::Rectangle<int> previous, presets, next;
};

const Layout usualLayouts[] {
    { 342, 41, { 0, 6, 41, 29 }, { 41, 0, 260, 41 }, { 301, 0, 41, 41 } },
    { 300, 30, { 0, 5, 30, 20 }, { 30, 0, 240, 30 }, { 270, 0, 30, 30 } },
    { 100, 60, { 0, 10, 60, 40 }, { 60, 0, 0, 60 }, { 60, 0, 40, 60 } },
    { 100, 100, { 0, 16, 100, 68 }, { 100, 0, 0, 100 }, { 100, 0, 0, 100 } },
    { 40, 100, { 0, 16, 40, 68 }, { 40, 0, 0, 100 }, { 40, 0, 0, 100 } },
    { 1, 1, { 0, 0, 1, 1 }, { 1, 0, 0, 1 }, { 1, 0, 0, 1 } },
    { 5000, 5, { 0, 0, 5, 5 }, { 5, 0, 4990, 5 }, { 4995, 0, 5, 5 } },
    { 5, 5000, { 0, 833, 5, 3334 }, { 5, 0, 0, 5000 }, { 5, 0, 0, 5000 } },
};

TEST_F (PresetsBarTest, LiesAsUsualWithoutALookOfItsOwn)
{
    for (const auto& layout : usualLayouts)
    {
        SCOPED_TRACE (juce::String (layout.width) + " x " + juce::String (layout.height));
        getBar().setSize (layout.width, layout.height);
        EXPECT_EQ (previousButton().getBounds(), layout.previous);
        EXPECT_EQ (presetsButton().getBounds(), layout.presets);
        EXPECT_EQ (nextButton().getBounds(), layout.next);
    }
}

TEST_F (PresetsBarTest, ButtonsShareTheWidthAtAnySize)
{
    juce::Random random (20);

    for (auto i = 0; i < 10000; ++i)
    {
        getBar().setSize (random.nextInt (3000), random.nextInt (1000));
        const auto previous = previousButton().getBounds();
        const auto middle = presetsButton().getBounds();
        const auto next = nextButton().getBounds();

        ASSERT_EQ (previous.getX(), 0);
        ASSERT_EQ (previous.getRight(), middle.getX());
        ASSERT_EQ (middle.getRight(), next.getX());
        ASSERT_EQ (next.getRight(), getBar().getWidth());
        ASSERT_TRUE (getBar().getLocalBounds().contains (previous)) << getBar().getBounds().toString();
    }
}

/** Puts each button somewhere else. */
class OwnLayout final : public FrameworkLookAndFeel, public PresetsBar::LookAndFeelMethods
{
public:
    void positionPresetsBar (PresetsBar& bar,
                             juce::TextButton& presetsButton,
                             juce::Button& previousButton,
                             juce::Button& nextButton) override
    {
        previousButton.setBounds (1, 2, bar.getWidth(), 4);
        nextButton.setBounds (5, 6, 7, bar.getHeight());
        presetsButton.setBounds (9, 10, 11, 12);
    }
};

TEST_F (PresetsBarTest, LeavesTheLayoutToALookThatHasOne)
{
    OwnLayout ownLayout;
    getBar().setLookAndFeel (&ownLayout);
    getBar().setSize (300, 30);

    EXPECT_EQ (previousButton().getBounds(), juce::Rectangle (1, 2, 300, 4));
    EXPECT_EQ (nextButton().getBounds(), juce::Rectangle (5, 6, 7, 30));
    EXPECT_EQ (presetsButton().getBounds(), juce::Rectangle (9, 10, 11, 12));
    getBar().setLookAndFeel (nullptr);
}

TEST_F (PresetsBarTest, FillsItsBackground)
{
    getBar().setSize (300, 30);
    const auto image = getBar().createComponentSnapshot (getBar().getLocalBounds());

    // The left arrow is inset, and so shows the bar above and below it.
    EXPECT_EQ (image.getPixelAt (0, 0), FrameworkLookAndFeel::presetsBarBackground);
    EXPECT_EQ (image.getPixelAt (29, 29), FrameworkLookAndFeel::presetsBarBackground);
}

const juce::DrawablePath& asPath (const juce::Component* image)
{
    return dynamic_cast<const juce::DrawablePath&> (*image);
}

void expectArrowColours (juce::Button& button, juce::Colour background)
{
    auto& arrow = dynamic_cast<juce::DrawableButton&> (button);
    const auto strength = [background] (const juce::Component* image, float amount)
    { EXPECT_EQ (asPath (image).getFill().colour, background.contrasting (amount)); };

    strength (arrow.getNormalImage(), 0.3f);
    strength (arrow.getOverImage(), 0.5f);
    strength (arrow.getDownImage(), 0.7f);

    arrow.setToggleState (true, juce::dontSendNotification);
    strength (arrow.getNormalImage(), 0.5f);
    arrow.setToggleState (false, juce::dontSendNotification);

    arrow.setEnabled (false);
    strength (test::findComponent<juce::DrawablePath> (arrow), 0.7f);
    arrow.setEnabled (true);
}

TEST_F (PresetsBarTest, ArrowsStandOutFromTheBackground)
{
    for (const auto background : { FrameworkLookAndFeel::presetsBarBackground, juce::Colours::black })
    {
        getBar().setColour (presetsBarBackgroundColourId, background);
        expectArrowColours (previousButton(), background);
        expectArrowColours (nextButton(), background);
    }
}

TEST_F (PresetsBarTest, ArrowsPointOutwards)
{
    const auto getPath = [] (juce::Button& button)
    { return asPath (dynamic_cast<juce::DrawableButton&> (button).getNormalImage()).getPath(); };

    EXPECT_EQ (getPath (nextButton()), createChevronPath());

    auto turned = getPath (previousButton());
    EXPECT_LT (turned.getBounds().getRight(), 0.0f);
    turned.applyTransform (juce::AffineTransform (-1.0f, 8.742278e-8f, 0.0f, -8.742278e-8f, -1.0f, 0.0f));
    EXPECT_EQ (turned.toString(), createChevronPath().toString());
}

TEST (ChevronPath, IsAStrokeWithRoundedEnds)
{
    const auto path = createChevronPath();
    EXPECT_TRUE (path.isUsingNonZeroWinding());
    EXPECT_EQ (path.toString(),
               "m 2.33 7.954 c 1.623 8.661 0.916 7.954 0.916 7.954 0.916 7.954 0.209 7.247 0.916 6.54 "
               "l 7.28 0.176 0.916 -6.188 c 0.209 -6.895 0.916 -7.602 0.916 -7.602 0.916 -7.602 1.623 -8.309 "
               "2.33 -7.602 l 9.401 -0.531 c 9.401 -0.531 9.455 -0.477 9.513 -0.386 9.636 -0.221 9.694 -0.06 "
               "9.704 0.091 9.704 0.119 9.714 0.146 9.714 0.175 9.713 0.204 9.714 0.232 9.704 0.26 9.694 0.412 "
               "9.636 0.573 9.513 0.738 9.452 0.826 9.401 0.883 9.401 0.883 l 2.33 7.954 z");
    EXPECT_TRUE (path.contains (8.5f, 0.175f));
    EXPECT_FALSE (path.contains (4.0f, 0.175f));
}
} // namespace
} // namespace cv::pluginCore
