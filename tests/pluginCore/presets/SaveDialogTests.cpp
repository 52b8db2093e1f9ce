#include "pluginCore/presets/PresetsManager.h"

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

    /** The question that a dialog asks; null while there is none. */
    static juce::AlertWindow* findQuestion()
    {
        auto& modals = *juce::ModalComponentManager::getInstance();

        for (auto i = 0; i < modals.getNumModalComponents(); ++i)
            if (auto* question = dynamic_cast<juce::AlertWindow*> (modals.getModalComponent (i)))
                return question;

        return nullptr;
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

TEST_F (SaveDialogTest, AsksBeforeItOverwrites)
{
    const auto file = userFolder().getChildFile ("mine.test");
    file.replaceWithText ("precious");

    const auto chooseAndAnswer = [&] (const juce::String& answer)
    {
        findBrowser()->setFileName (file.getFullPathName());
        findComponent<juce::Button> (*findBrowser()->getTopLevelComponent(),
                                     [] (auto& button) { return button.getButtonText() == "Save"; })
            ->triggerClick();
        ASSERT_TRUE (runMessageLoopUntil ([] { return findQuestion() != nullptr; }));
        EXPECT_EQ (file.loadFileAsString(), "precious");
        findQuestion()->triggerButtonClick (answer);
        ASSERT_TRUE (runMessageLoopUntil ([] { return findQuestion() == nullptr; }));
    };

    open();
    chooseAndAnswer ("Cancel");
    runMessageLoopFor (50);
    ASSERT_NE (findBrowser(), nullptr);
    EXPECT_EQ (file.loadFileAsString(), "precious");
    EXPECT_EQ (presets.getCurrentPresetFile(), juce::File());

    chooseAndAnswer ("Overwrite");
    ASSERT_TRUE (runMessageLoopUntil ([] { return findBrowser() == nullptr; }));
    EXPECT_EQ (presets.getCurrentPresetFile(), file);
    EXPECT_TRUE (file.loadFileAsString().contains ("<TestProduct"));
}

TEST_F (SaveDialogTest, ShowsPresetsAlone)
{
    open();
    EXPECT_TRUE (findBrowser()->isFileSuitable (userFolder().getChildFile ("a.test")));
    EXPECT_FALSE (findBrowser()->isFileSuitable (userFolder().getChildFile ("a.txt")));
    EXPECT_FALSE (findBrowser()->isFileSuitable (userFolder().getChildFile ("a")));
    press ("Cancel");
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
