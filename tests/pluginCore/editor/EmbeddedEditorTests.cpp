#include "support/FindComponent.h"
#include "support/HostWindow.h"
#include "support/MessageLoop.h"
#include "support/PresetSandbox.h"
#include "support/RealMouse.h"
#include "support/TestProductEditor.h"

#include <gtest/gtest.h>

namespace cv::pluginCore
{
namespace
{
using cv::test::HostWindow;
using cv::test::RealMouse;
using cv::test::runMessageLoopFor;
using cv::test::runMessageLoopUntil;

/** An editor in a window of its host's, and the display's mouse. */
class EmbeddedEditorTest : public testing::Test
{
protected:
    EmbeddedEditorTest() { product.initialise(); }

    void SetUp() override
    {
        ASSERT_TRUE (host.isOpen()) << "This needs a display.";
        ASSERT_TRUE (mouse.isUsable()) << "This needs a display that takes events from programs.";

        host.takeFocus();
        park();
        open();
    }

    void TearDown() override { close(); }

    void open()
    {
        editor.reset (dynamic_cast<PluginEditor*> (product.createEditorIfNeeded()));
        editor->setSize (600, 300);
        editor->addToDesktop (0, host.getHandle());
        editor->setVisible (true);
        presetsButton = cv::test::findComponent<juce::TextButton> (
            *editor, [] (auto& button) { return button.getButtonText().startsWith ("Presets"); });
        EXPECT_TRUE (runMessageLoopUntil ([this] { return host.showsAnother(); }));
    }

    void close()
    {
        juce::PopupMenu::dismissAllActiveMenus();
        product.editorBeingDeleted (editor.get());
        editor.reset();
    }

    /** Puts the mouse beside the host's window. */
    void park() { mouse.moveTo (host.getHandle(), { -20, -20 }); }

    /** Moves the mouse onto the name of the preset and clicks, all in an instant: a menu has to open and to stay. */
    void expectMenuOnClick()
    {
        const auto place = editor->getLocalArea (presetsButton, presetsButton->getLocalBounds()).getCentre();
        mouse.moveTo (editor->getWindowHandle(), place);
        mouse.press();
        mouse.release();
        EXPECT_TRUE (runMessageLoopUntil (isMenuOpen));

        runMessageLoopFor (watchMilliseconds);
        EXPECT_TRUE (isMenuOpen());
    }

    /** Takes the keyboard away from the editor, which JUCE goes by. */
    void sendToBackground()
    {
        park();
        host.takeFocus();
        EXPECT_TRUE (runMessageLoopUntil ([] { return ! juce::Process::isForegroundProcess(); }));
    }

    static bool isMenuOpen() { return juce::Component::getCurrentlyModalComponent() != nullptr; }

    static constexpr juce::Point<int> hostPosition { 120, 90 };

    // Several turns of what watches the window.
    static constexpr int watchMilliseconds = 250;

    const HostWindow host { { hostPosition.x, hostPosition.y, 600, 300 } };
    RealMouse mouse;
    const cv::test::PresetSandbox sandbox;
    cv::test::TestProduct product { sandbox.getLocations() };
    std::unique_ptr<PluginEditor> editor;
    juce::TextButton* presetsButton = nullptr;
};

TEST_F (EmbeddedEditorTest, AMoveOfTheHostsWindowClosesTheMenu)
{
    for (auto i = 0; i < 3; ++i)
    {
        expectMenuOnClick();
        host.moveTo (hostPosition + juce::Point (40 * i, 30));
        EXPECT_TRUE (runMessageLoopUntil ([] { return ! isMenuOpen(); }));
        park();
    }
}

TEST_F (EmbeddedEditorTest, AClickRightAfterOpeningShowsTheMenu)
{
    expectMenuOnClick();
}

TEST_F (EmbeddedEditorTest, AClickThatBringsTheHostToTheForegroundShowsTheMenu)
{
    expectMenuOnClick();
    sendToBackground();
    close();
    open();
    runMessageLoopFor (watchMilliseconds);
    EXPECT_FALSE (juce::Process::isForegroundProcess());
    expectMenuOnClick();
}

TEST_F (EmbeddedEditorTest, AMoveInTheBackgroundIsNoReasonToCloseALaterMenu)
{
    expectMenuOnClick();
    juce::PopupMenu::dismissAllActiveMenus();

    // A menu that closes gives the keyboard back to its window.
    runMessageLoopFor (watchMilliseconds);
    sendToBackground();
    runMessageLoopFor (watchMilliseconds);

    host.moveTo (hostPosition + juce::Point (40, 30));
    runMessageLoopFor (watchMilliseconds);
    expectMenuOnClick();
}

TEST_F (EmbeddedEditorTest, AHostThatGoesToTheBackgroundClosesTheMenu)
{
    expectMenuOnClick();
    sendToBackground();
    EXPECT_TRUE (runMessageLoopUntil ([] { return ! isMenuOpen(); }));
}
} // namespace
} // namespace cv::pluginCore
