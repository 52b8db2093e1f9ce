#include "varlo/editor/AudioPluginAudioProcessorEditor.h"

#include "support/MessageLoop.h"
#include "support/Mouse.h"
#include "support/Rendering.h"
#include "support/VarloEditorFixture.h"

#include <gtest/gtest.h>

namespace cv::varlo
{
namespace
{
using cv::test::findComponent;
using cv::test::ProcessorHarness;
using cv::test::render;
using cv::test::runMessageLoopFor;
using cv::test::runMessageLoopUntil;
using cv::test::sendMouse;
using Area = juce::Rectangle<int>;

class VarloEditorTest : public test::VarloEditorFixture
{
};

TEST_F (VarloEditorTest, OpensInItsDefaultSize)
{
    EXPECT_EQ (editor->getWidth(), 1050);
    EXPECT_EQ (editor->getHeight(), 578);
    EXPECT_EQ (editor->getConstrainer()->getFixedAspectRatio(), (double) 1.818f);

    const auto limits = editor->getEditorSizeLimits();
    EXPECT_EQ (limits.minWidth, 100);
    EXPECT_EQ (limits.minHeight, 100);
    EXPECT_EQ (limits.maxWidth, 10000);
    EXPECT_EQ (limits.maxHeight, 10000);
}

TEST_F (VarloEditorTest, HoldsTheKnobsInAnOrderOfTheirOwn)
{
    auto last = -1;

    for (const auto* const caption : { "Delay", "Feedback", "Degrade", "Mix", "Lowpass", "Reso" })
    {
        const auto index = editor->getIndexOfChildComponent (&findKnob (caption));
        EXPECT_GT (index, last) << caption;
        last = index;
    }
}

TEST_F (VarloEditorTest, PutsEverythingInItsPlace)
{
    EXPECT_EQ (find<pluginCore::PluginHeaderComponent>().getBounds(), Area (0, 0, 1050, 69));
    EXPECT_EQ (find<SpectrogramComponent>().getBounds(), Area (28, 69, 994, 342));
    EXPECT_EQ (find<TapButton>().getBounds(), Area (48, 464, 69, 34));
    EXPECT_EQ (find<BlinkingLed>().getBounds(), Area (76, 508, 13, 13));
    EXPECT_EQ (findKnob ("Delay").getBounds(), Area (136, 432, 130, 139));
    EXPECT_EQ (findKnob ("Feedback").getBounds(), Area (266, 432, 130, 139));
    EXPECT_EQ (findKnob ("Degrade").getBounds(), Area (428, 432, 130, 139));
    EXPECT_EQ (findKnob ("Lowpass").getBounds(), Area (590, 432, 130, 139));
    EXPECT_EQ (findKnob ("Reso").getBounds(), Area (720, 432, 130, 139));
    EXPECT_EQ (findKnob ("Mix").getBounds(), Area (882, 432, 130, 139));
    EXPECT_EQ (find<AboutComponent>().getBounds(), Area (0, 0, 1050, 578));

    EXPECT_EQ (findHeaderButton ("logo").getBounds(), Area (31, 0, 98, 69));
    EXPECT_EQ (findHeaderButton ("info").getBounds(), Area (887, 0, 132, 69));
    EXPECT_EQ (find<pluginCore::PresetsBar>().getBounds(), Area (354, 14, 342, 41));

    for (const auto* const unreachable : { "undo", "redo" })
        EXPECT_TRUE (findHeaderButton (unreachable).getBounds().isEmpty());
}

TEST_F (VarloEditorTest, LaysOutAnySizeWithoutNegativeOnes)
{
    for (const auto& [width, height] : { std::pair (1, 1), std::pair (100, 100), std::pair (3000, 10),
                                         std::pair (10, 3000), std::pair (525, 289), std::pair (2100, 1155) })
    {
        editor->setSize (width, height);

        for (auto* const child : editor->getChildren())
        {
            EXPECT_GE (child->getWidth(), 0);
            EXPECT_GE (child->getHeight(), 0);
        }
    }
}

TEST_F (VarloEditorTest, PaintsItsBackground)
{
    const auto image = render (*editor);
    EXPECT_EQ (image.getPixelAt (5, 420), juce::Colour (0xff151515));
    EXPECT_EQ (image.getPixelAt (5, 570), juce::Colour (0xff151515));
}

TEST_F (VarloEditorTest, LogoAndInfoShowTheAboutPanelUntilAClick)
{
    editor->setVisible (true);
    auto& about = find<AboutComponent>();
    EXPECT_FALSE (about.isVisible());

    for (const auto* const name : { "logo", "info" })
    {
        findHeaderButton (name).onClick();
        EXPECT_TRUE (about.isVisible()) << name;
        EXPECT_EQ (editor->getComponentAt (500, 450), static_cast<juce::Component*> (&about));

        about.setVisible (false);
    }
}

TEST_F (VarloEditorTest, TheAboutPanelCoversEveryControl)
{
    editor->setVisible (true);
    auto& about = find<AboutComponent>();
    about.setVisible (true);

    for (auto* const child : editor->getChildren())
    {
        if (child->isVisible() && dynamic_cast<juce::ResizableCornerComponent*> (child) == nullptr)
        {
            auto* const top = editor->getComponentAt (child->getBounds().getCentre());
            EXPECT_TRUE (top == &about || about.isParentOf (top)) << child->getBounds().toString();
        }
    }
}

TEST_F (VarloEditorTest, TheAboutPanelIsHiddenAtEachOpening)
{
    find<AboutComponent>().setVisible (true);
    close();
    editor.reset (dynamic_cast<AudioPluginAudioProcessorEditor*> (harness.processor.createEditorIfNeeded()));
    EXPECT_FALSE (find<AboutComponent>().isVisible());
}

TEST_F (VarloEditorTest, TheLogoFillsItsButton)
{
    auto& logo = findHeaderButton ("logo");
    const auto ink = test::getAreaWhere (render (logo), [] (juce::Colour c) { return c.getAlpha() > 128; });

    // A button's image keeps 3 logical pixels to its edges.
    EXPECT_GE (ink.getWidth(), 90);
    EXPECT_GE (ink.getHeight(), 20);
    EXPECT_NEAR (ink.getCentreY(), 69 / 2, 3);
}

TEST_F (VarloEditorTest, TheCornerDragsInTheAspectRatioWithinTheLimits)
{
    editor->addToDesktop (0);
    editor->setVisible (true);
    auto& corner = find<juce::ResizableCornerComponent>();

    const auto drag = [&] (juce::Point<int> distance)
    {
        const auto target = (corner.getBounds().getCentre() + distance).toFloat();
        test::moveMouseTo (corner);
        test::pressMouseOn (corner);
        sendMouse (*editor, target, true);
        sendMouse (*editor, target, false);
    };

    drag ({ -300, -165 });
    EXPECT_NEAR (editor->getWidth(), 750, 2);
    EXPECT_NEAR (editor->getWidth() / 1.818, editor->getHeight(), 1.0);

    drag ({ -2000, -2000 });
    EXPECT_GE (editor->getWidth(), 100);
    EXPECT_GE (editor->getHeight(), 100);
    EXPECT_NEAR (editor->getWidth() / 1.818, editor->getHeight(), 1.0);
}

TEST_F (VarloEditorTest, ItsLookIsTheDefaultWhileOneIsOpen)
{
    EXPECT_NE (dynamic_cast<PluginLookAndFeel*> (&editor->getLookAndFeel()), nullptr);

    ProcessorHarness other;
    std::unique_ptr<juce::AudioProcessorEditor> second (other.processor.createEditorIfNeeded());
    EXPECT_EQ (&second->getLookAndFeel(), &editor->getLookAndFeel());

    close();
    EXPECT_NE (dynamic_cast<PluginLookAndFeel*> (&second->getLookAndFeel()), nullptr);
    other.processor.editorBeingDeleted (second.get());
    second.reset();
    EXPECT_EQ (dynamic_cast<PluginLookAndFeel*> (&juce::LookAndFeel::getDefaultLookAndFeel()), nullptr);
}

TEST_F (VarloEditorTest, ShowsThroughAtTheCornersOfItsMenu)
{
    editor->addToDesktop (0);
    editor->setVisible (true);

    // A window that comes to the foreground closes menus. Its editor looks for that here.
    editor->toFront (true);
    ASSERT_TRUE (runMessageLoopUntil ([] { return juce::Process::isForegroundProcess(); }));
    editor->toFront (true);

    findComponent<juce::TextButton> (find<pluginCore::PresetsBar>())->triggerClick();
    ASSERT_TRUE (runMessageLoopUntil ([] { return juce::Component::getCurrentlyModalComponent() != nullptr; }));

    auto& menu = *juce::Component::getCurrentlyModalComponent();
    ASSERT_EQ (menu.getParentComponent(), editor.get());
    EXPECT_FALSE (menu.isOpaque());

    const auto corner = menu.getBounds().getBottomLeft().translated (0, -1);
    const auto withMenu = render (*editor).getPixelAt (corner.x, corner.y);
    menu.setVisible (false);
    const auto withoutMenu = render (*editor).getPixelAt (corner.x, corner.y);
    EXPECT_NEAR (withMenu.getRed(), withoutMenu.getRed(), 12);

    juce::PopupMenu::dismissAllActiveMenus();
    EXPECT_TRUE (runMessageLoopUntil ([] { return juce::Component::getCurrentlyModalComponent() == nullptr; }));
}

TEST_F (VarloEditorTest, ManyOpeningsLeaveNothingBehind)
{
    for (auto i = 0; i < 20; ++i)
    {
        close();
        editor.reset (dynamic_cast<AudioPluginAudioProcessorEditor*> (harness.processor.createEditorIfNeeded()));
        runMessageLoopFor (2);
    }

    EXPECT_TRUE (harness.processor.getFFTProcessor().onSampleRateChanged);
    close();
    EXPECT_FALSE (harness.processor.getFFTProcessor().onSampleRateChanged);
}
} // namespace
} // namespace cv::varlo
