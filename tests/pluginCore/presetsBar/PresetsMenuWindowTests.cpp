#include "support/MessageLoop.h"
#include "support/Mouse.h"
#include "support/PresetsBarFixture.h"

namespace cv::pluginCore
{
namespace
{
using test::runMessageLoopFor;
using test::runMessageLoopUntil;

/** A bar in a window, and the menu that it opens. */
class PresetsMenuWindowTest : public test::PresetsBarFixture
{
protected:
    /** Shows the bar as a child of this component, which goes on the desktop. */
    void show (juce::Component& window)
    {
        window.setBounds (50, 50, 400, 300);
        window.addAndMakeVisible (getBar());
        getBar().setBounds (20, 10, 300, 40);
        window.addToDesktop (0);
        window.setVisible (true);
    }

    juce::Component* openMenu()
    {
        test::pressMouseOn (presetsButton());
        auto* const menu = juce::Component::getCurrentlyModalComponent();
        EXPECT_NE (menu, nullptr) << "The press alone opens the menu.";
        test::releaseMouseOn (presetsButton());

        // A menu that has just opened takes no clicks, since the button may still be down.
        runMessageLoopFor (300);
        return menu;
    }

    /** An item of the menu by its text, as a screen reader is told it. */
    static juce::Component& getItem (juce::Component& menu, const juce::String& text)
    {
        for (auto* const item : menu.getChildren())
            if (const auto* const handler = item->getAccessibilityHandler(); handler && handler->getTitle() == text)
                return *item;

        throw std::runtime_error ("no item " + text.toStdString());
    }

    static void click (juce::Component& item)
    {
        // The menu asks the system where the mouse is, and follows it there by a timer.
        juce::Desktop::setMousePosition (item.getScreenBounds().getCentre());
        EXPECT_TRUE (
            runMessageLoopUntil ([&] { return item.getAccessibilityHandler()->getCurrentState().isSelected(); }));
        test::pressMouseOn (item);
        test::releaseMouseOn (item);
    }

    static bool closed()
    {
        return runMessageLoopUntil ([] { return juce::Component::getCurrentlyModalComponent() == nullptr; });
    }
};

/** Where the menu belongs. */
class Editor final : public juce::AudioProcessorEditor
{
public:
    explicit Editor (juce::AudioProcessor& owner) : AudioProcessorEditor (owner) {}
};

TEST_F (PresetsMenuWindowTest, AClickOnAnItemLoadsThePreset)
{
    writePreset (userFolder, "a.test", 1.0f);
    writePreset (userFolder, "b.test", 2.0f);
    Editor editor (product);
    show (editor);

    auto* const menu = openMenu();
    ASSERT_NE (menu, nullptr);
    EXPECT_EQ (menu->getParentComponent(), &editor);

    // Save, Save as, a separator, the folder, the bank's title, a, b.
    ASSERT_EQ (menu->getNumChildComponents(), 7);
    EXPECT_EQ (getItem (*menu, "b").getHeight(), 28);
    EXPECT_GE (menu->getWidth(), presetsButton().getWidth());
    click (getItem (*menu, "b"));

    EXPECT_TRUE (runMessageLoopUntil ([this] { return presetsButton().getButtonText() == "b"; }));
    EXPECT_FLOAT_EQ (product.get ("level"), 2.0f);
    EXPECT_TRUE (closed());
}

TEST_F (PresetsMenuWindowTest, ItemsAreRoundedToWholePixels)
{
    writePreset (userFolder, "a.test");
    juce::Component window;
    show (window);
    getBar().setBounds (20, 10, 300, 41);
    ASSERT_EQ (presetsButton().getHeight(), 41);

    auto* const menu = openMenu();
    ASSERT_NE (menu, nullptr);
    EXPECT_EQ (getItem (*menu, "a").getHeight(), 29); // of 28.7
    juce::PopupMenu::dismissAllActiveMenus();
    EXPECT_TRUE (closed());
}

TEST_F (PresetsMenuWindowTest, OpensWithoutAnEditorToo)
{
    juce::Component window;
    show (window);

    auto* const menu = openMenu();
    ASSERT_NE (menu, nullptr);
    EXPECT_TRUE (menu->isOnDesktop());
    juce::PopupMenu::dismissAllActiveMenus();
    EXPECT_TRUE (closed());
}

TEST_F (PresetsMenuWindowTest, OpeningReadsTheFoldersAgain)
{
    writePreset (userFolder, "a.test");
    juce::Component window;
    show (window);
    presets.savePreset (writePreset (userFolder, "b.test"), true);
    EXPECT_EQ (getPresetLines(), "[User Presets]\n5 a");

    openMenu();
    EXPECT_EQ (getPresetLines(), "[User Presets]\n5 a\n6 b *");
    juce::PopupMenu::dismissAllActiveMenus();
    EXPECT_TRUE (closed());
    EXPECT_EQ (PresetsBarFixture::click (previousButton()), "a");
}

TEST_F (PresetsMenuWindowTest, TheBarMayCloseWhileItsMenuIsOpen)
{
    writePreset (userFolder, "a.test", 1.0f);
    Editor editor (product);
    show (editor);
    auto* const menu = openMenu();
    ASSERT_NE (menu, nullptr);

    bar.reset();
    click (getItem (*menu, "a"));
    EXPECT_TRUE (closed());
    runMessageLoopFor (50);
    EXPECT_EQ (presets.getCurrentPresetFile(), juce::File());
}

TEST_F (PresetsMenuWindowTest, TheEditorMayCloseWhileTheMenuIsOpen)
{
    auto editor = std::make_unique<Editor> (product);
    show (*editor);
    ASSERT_NE (openMenu(), nullptr);

    bar.reset();
    juce::PopupMenu::dismissAllActiveMenus();
    editor.reset();
    EXPECT_TRUE (closed());
    runMessageLoopFor (50);
}

TEST_F (PresetsMenuWindowTest, ArrowsActOnRelease)
{
    writePreset (userFolder, "a.test");
    juce::Component window;
    show (window);

    test::pressMouseOn (nextButton());
    EXPECT_EQ (presets.getCurrentPresetFile(), juce::File());
    test::releaseMouseOn (nextButton());
    EXPECT_EQ (presets.getCurrentPresetFile().getFileName(), "a.test");
}
} // namespace
} // namespace cv::pluginCore
