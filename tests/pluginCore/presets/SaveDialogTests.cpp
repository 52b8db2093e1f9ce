#include "presets/PresetsManager.h"

#include "support/FindComponent.h"
#include "support/MessageLoop.h"
#include "support/PresetListenerLog.h"
#include "support/PresetSandbox.h"
#include "support/TestProduct.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace cv::pluginCore
{
namespace
{
using cv::test::findComponent;
using cv::test::PresetListenerLog;
using cv::test::PresetSandbox;
using cv::test::runMessageLoopFor;
using cv::test::runMessageLoopUntil;
using cv::test::TestProduct;

/** The save dialog that is open, JUCE's own: no program for the system's can be found. */
class SaveDialogTest : public testing::Test
{
protected:
    static void SetUpTestSuite() { setenv ("PATH", "", 1); }

    SaveDialogTest() { product.initialise(); }

    static juce::FileBrowserComponent* findBrowser()
    {
        auto& desktop = juce::Desktop::getInstance();

        for (auto i = 0; i < desktop.getNumComponents(); ++i)
            if (auto* browser = findComponent<juce::FileBrowserComponent> (*desktop.getComponent (i)))
                return browser;

        return nullptr;
    }

    /** Opens the dialog and returns the folder that it shows. */
    juce::File open (bool reloadAfterSave = false)
    {
        presets.savePresetAs (reloadAfterSave);
        EXPECT_TRUE (runMessageLoopUntil ([] { return findBrowser() != nullptr; }));
        return findBrowser() != nullptr ? findBrowser()->getRoot() : juce::File();
    }

    static void press (const juce::String& buttonText)
    {
        auto* button = findComponent<juce::Button> (*findBrowser()->getTopLevelComponent(),
                                                    [&] (auto& b) { return b.getButtonText() == buttonText; });
        ASSERT_NE (button, nullptr) << buttonText;
        button->triggerClick();
        ASSERT_TRUE (runMessageLoopUntil ([] { return findBrowser() == nullptr; }));
    }

    static void choose (const juce::File& file)
    {
        findBrowser()->setFileName (file.getFullPathName());
        press ("Save");
    }

    const juce::File& userFolder() const { return sandbox.getLocations().userFolder; }

    const PresetSandbox sandbox;
    TestProduct product { sandbox.getLocations() };
    PresetsManager& presets = product.getPresetsManager();
    PresetListenerLog log { presets };
};

TEST_F (SaveDialogTest, OpensInTheUserBankAtFirst)
{
    EXPECT_EQ (open(), userFolder());
    EXPECT_EQ (findBrowser()->getTopLevelComponent()->getName(), "save...");
}

TEST_F (SaveDialogTest, CancelChangesNothing)
{
    product.set ("level", 10.0f);
    log.takeEvents();
    open();
    press ("Cancel");

    EXPECT_EQ (presets.getCurrentPresetFile(), juce::File());
    EXPECT_TRUE (presets.isDirty());
    EXPECT_EQ (log.takeEvents(), "");
    EXPECT_EQ (userFolder().getNumberOfChildFiles (juce::File::findFilesAndDirectories), 0);
}

TEST_F (SaveDialogTest, SavesWhatTheUserChooses)
{
    product.set ("level", 10.0f);
    log.takeEvents();
    open (true);
    const auto file = userFolder().getChildFile ("chosen.test");
    choose (file);

    EXPECT_TRUE (file.existsAsFile());
    EXPECT_EQ (presets.getCurrentPresetFile(), file);
    EXPECT_EQ (log.takeEvents(), "clean, loaded chosen.test");
}

TEST_F (SaveDialogTest, RemembersTheFolderWithinTheUserBank)
{
    const auto folder = userFolder().getChildFile ("mine");
    folder.createDirectory();
    open();
    choose (folder.getChildFile ("a.test"));
    EXPECT_EQ (presets.getLastSaveFolder(), folder);

    const auto outside = sandbox.getFile ("outside.test");
    EXPECT_EQ (open(), folder);
    choose (outside);
    EXPECT_TRUE (outside.existsAsFile());
    EXPECT_EQ (presets.getCurrentPresetFile(), outside);
    EXPECT_EQ (presets.getLastSaveFolder(), folder);

    EXPECT_EQ (open(), folder);
    press ("Cancel");

    folder.deleteRecursively();
    EXPECT_EQ (open(), userFolder());
}

TEST_F (SaveDialogTest, SecondDialogReplacesTheFirst)
{
    open();
    presets.savePresetAs (false);
    runMessageLoopFor (50);
    ASSERT_NE (findBrowser(), nullptr);

    choose (userFolder().getChildFile ("a.test"));
    EXPECT_TRUE (userFolder().getChildFile ("a.test").existsAsFile());
    EXPECT_EQ (log.takeEvents(), "");
}

TEST_F (SaveDialogTest, GoesWithThePlugin)
{
    auto another = std::make_unique<TestProduct> (sandbox.getLocations());
    another->getPresetsManager().savePresetAs (false);
    ASSERT_TRUE (runMessageLoopUntil ([] { return findBrowser() != nullptr; }));

    another.reset();
    EXPECT_TRUE (runMessageLoopUntil ([] { return findBrowser() == nullptr; }));
}
} // namespace
} // namespace cv::pluginCore
