#include "pluginCore/presets/PresetsManager.h"

#include "support/CurrentPresetLog.h"
#include "support/PresetListenerLog.h"
#include "support/PresetSandbox.h"
#include "support/TestProduct.h"
#include "support/WriteProtection.h"

#include <gmock/gmock.h>

#include <sys/stat.h>
#include <thread>

namespace cv::pluginCore
{
namespace
{
using cv::test::CurrentPresetLog;
using cv::test::PresetListenerLog;
using cv::test::PresetSandbox;
using cv::test::TestProduct;

juce::String presetText (float level, float time)
{
    juce::String text;
    text << "<TestProduct version=\"2.3.4\"><PARAMS><PARAM id=\"level\" value=\"" << level
         << "\"/><PARAM id=\"time\" value=\"" << time << "\"/></PARAMS></TestProduct>";
    return text;
}

class PresetsManagerTest : public testing::Test
{
protected:
    PresetsManagerTest() { product.initialise(); }

    juce::File writePreset (const juce::String& name, const juce::String& text) const
    {
        const auto file = userFolder().getChildFile (name);
        file.replaceWithText (text);
        return file;
    }

    const juce::File& userFolder() const { return sandbox.getLocations().userFolder; }

    const PresetSandbox sandbox;
    TestProduct product { sandbox.getLocations() };
    PresetsManager& presets = product.getPresetsManager();
    PresetListenerLog log { presets };
};

TEST_F (PresetsManagerTest, StartsWithoutAPresetAndWithFolders)
{
    EXPECT_EQ (presets.getCurrentPresetFile(), juce::File());
    EXPECT_FALSE (presets.isDirty());
    EXPECT_EQ (presets.getLastSaveFolder(), userFolder());
    EXPECT_EQ (presets.getLocations().initPresetFile.getFileName(), "Init.test");

    userFolder().getParentDirectory().deleteRecursively();
    const TestProduct another (sandbox.getLocations());
    EXPECT_TRUE (userFolder().isDirectory());
}

TEST_F (PresetsManagerTest, NoPresetIsLoadedAtTheStart)
{
    presets.getLocations().initPresetFile.replaceWithText (presetText (10.0f, 20.0f));
    TestProduct another (sandbox.getLocations());
    another.initialise();

    EXPECT_EQ (another.get ("level"), 50.0f);
    EXPECT_EQ (another.getPresetsManager().getCurrentPresetFile(), juce::File());
}

TEST_F (PresetsManagerTest, LoadAppliesThePresetAndEndsClean)
{
    const auto file = writePreset ("a.test", presetText (10.0f, 20.0f));
    presets.loadPreset (file);

    EXPECT_EQ (product.get ("level"), 10.0f);
    EXPECT_EQ (product.get ("time"), 20.0f);
    EXPECT_EQ (presets.getCurrentPresetFile(), file);
    EXPECT_FALSE (presets.isDirty());
    EXPECT_EQ (log.takeEvents(), "dirty, clean, loaded a.test");
}

TEST_F (PresetsManagerTest, LoadMakesThePresetCurrentBeforeTheParametersMove)
{
    const CurrentPresetLog presetsAtMoves (product, "level");
    presets.loadPreset (writePreset ("a.test", presetText (10.0f, 20.0f)));
    presets.loadPreset (writePreset ("b.test", presetText (30.0f, 20.0f)));
    EXPECT_EQ (presetsAtMoves.names, juce::StringArray ("a.test", "b.test"));
}

TEST_F (PresetsManagerTest, LoadingThePresentSoundSendsNoChangeOfTheMark)
{
    presets.loadPreset (writePreset ("a.test", presetText (50.0f, 100.0f)));
    EXPECT_EQ (log.takeEvents(), "loaded a.test");
}

TEST_F (PresetsManagerTest, LoadingWhileDirtySendsCleanOnce)
{
    product.set ("level", 10.0f);
    log.takeEvents();

    presets.loadPreset (writePreset ("a.test", presetText (60.0f, 70.0f)));
    EXPECT_EQ (log.takeEvents(), "clean, loaded a.test");
}

TEST_F (PresetsManagerTest, EachParameterMarksThePresetOnce)
{
    product.set ("level", 10.0f);
    product.set ("level", 20.0f);
    product.set ("time", 30.0f);
    EXPECT_EQ (log.takeEvents(), "dirty");

    presets.loadPreset (writePreset ("a.test", presetText (60.0f, 70.0f)));
    log.takeEvents();
    product.set ("time", 80.0f);
    product.set ("time", 70.0f);
    EXPECT_TRUE (presets.isDirty());
    EXPECT_EQ (log.takeEvents(), "dirty");
}

TEST_F (PresetsManagerTest, UndoMarksThePreset)
{
    auto& tree = product.getValueTreeState();
    product.getUndoManager().beginNewTransaction();
    product.set ("level", 10.0f);
    tree.copyState();
    presets.setDirty (false);

    ASSERT_TRUE (product.getUndoManager().undo());
    EXPECT_EQ (product.get ("level"), 50.0f);
    EXPECT_TRUE (presets.isDirty());
}

TEST_F (PresetsManagerTest, WhatCannotBeReadChangesNothing)
{
    product.set ("level", 10.0f);
    const auto current = writePreset ("current.test", presetText (20.0f, 30.0f));
    presets.loadPreset (current);
    product.set ("level", 40.0f);
    log.takeEvents();

    const auto tooLarge = presetText (60.0f, 70.0f) + juce::String::repeatedString (" ", 1024 * 1024);
    const auto pipe = userFolder().getChildFile ("pipe.test");
    ASSERT_EQ (mkfifo (pipe.getFullPathName().toRawUTF8(), 0600), 0);

    for (const auto& file :
         { userFolder().getChildFile ("missing.test"), writePreset ("empty.test", ""),
           writePreset ("text.test", "text"), writePreset ("cut.test", "<TestProduct><PARAMS>"),
           writePreset ("large.test", tooLarge), pipe, juce::File ("/dev/zero"), userFolder(), juce::File() })
        presets.loadPreset (file);

    EXPECT_EQ (product.get ("level"), 40.0f);
    EXPECT_EQ (presets.getCurrentPresetFile(), current);
    EXPECT_TRUE (presets.isDirty());
    EXPECT_EQ (log.takeEvents(), "");
}

TEST_F (PresetsManagerTest, AnotherProductsPresetBecomesCurrentWithoutASound)
{
    product.set ("level", 10.0f);
    log.takeEvents();
    const auto foreign = writePreset ("foreign.test", presetText (20.0f, 30.0f).replace ("TestProduct", "Other"));
    presets.loadPreset (foreign);

    EXPECT_EQ (product.get ("level"), 10.0f);
    EXPECT_EQ (presets.getCurrentPresetFile(), foreign);
    EXPECT_FALSE (presets.isDirty());
    EXPECT_EQ (log.takeEvents(), "clean, loaded foreign.test");
}

TEST_F (PresetsManagerTest, LoadEndsTheUndoHistory)
{
    product.getUndoManager().beginNewTransaction();
    product.set ("level", 10.0f);
    product.getValueTreeState().copyState();
    ASSERT_TRUE (product.getUndoManager().canUndo());

    presets.loadPreset (writePreset ("same.test", presetText (10.0f, 100.0f)));
    EXPECT_FALSE (product.getUndoManager().canUndo());
    EXPECT_EQ (log.takeEvents(), "dirty, clean, loaded same.test");
}

TEST_F (PresetsManagerTest, SaveWritesTheSoundAndKeepsListenersQuiet)
{
    product.set ("level", 12.5f);
    log.takeEvents();
    const auto file = userFolder().getChildFile ("saved.test");
    presets.savePreset (file, false);

    EXPECT_EQ (presets.getCurrentPresetFile(), file);
    EXPECT_FALSE (presets.isDirty());
    EXPECT_EQ (log.takeEvents(), "clean");

    presets.savePreset (file, false);
    EXPECT_EQ (log.takeEvents(), "");

    product.set ("level", 99.0f);
    presets.loadPreset (file);
    EXPECT_EQ (product.get ("level"), 12.5f);
}

TEST_F (PresetsManagerTest, SaveWithReloadTellsOfALoad)
{
    product.set ("level", 12.5f);
    log.takeEvents();
    presets.savePreset (userFolder().getChildFile ("saved.test"), true);

    EXPECT_FALSE (presets.isDirty());
    EXPECT_EQ (log.takeEvents(), "clean, loaded saved.test");
}

TEST_F (PresetsManagerTest, SaveReplacesAFileWhole)
{
    const auto file = writePreset ("old.test", juce::String::repeatedString ("old ", 10000));
    presets.savePreset (file, false);

    EXPECT_TRUE (file.loadFileAsString().endsWith ("</TestProduct>\r\n"));
    EXPECT_EQ (userFolder().getNumberOfChildFiles (juce::File::findFilesAndDirectories), 1);
}

TEST_F (PresetsManagerTest, FileThatCannotBeWrittenIsCurrentAllTheSame)
{
    product.set ("level", 10.0f);
    log.takeEvents();
    const auto nowhere = sandbox.getFile ("missing/folder/x.test");
    writePreset ("file", "text");

    for (const auto& file : { nowhere, userFolder().getChildFile ("file/x.test"), juce::File ("/proc/x.test") })
    {
        product.set ("level", product.get ("level") + 1.0f);
        log.takeEvents();
        presets.savePreset (file, false);

        EXPECT_EQ (presets.getCurrentPresetFile(), file);
        EXPECT_FALSE (presets.isDirty());
        EXPECT_EQ (log.takeEvents(), "clean");
        EXPECT_FALSE (file.exists());
    }

    product.set ("level", 40.0f);
    log.takeEvents();
    presets.savePreset (nowhere, true);
    EXPECT_TRUE (presets.isDirty());
    EXPECT_EQ (log.takeEvents(), "");
}

TEST_F (PresetsManagerTest, FullDiskLeavesTheOldFileWhole)
{
    const auto file = writePreset ("old.test", presetText (10.0f, 20.0f));
    const auto other = writePreset ("other.test", presetText (30.0f, 40.0f));
    presets.loadPreset (other);
    product.set ("level", 99.0f);
    log.takeEvents();

    {
        const cv::test::FullDisk fullDisk (100);
        presets.savePreset (file, false);
    }

    EXPECT_EQ (file.loadFileAsString(), presetText (10.0f, 20.0f));
    EXPECT_EQ (presets.getCurrentPresetFile(), file);
    EXPECT_FALSE (presets.isDirty());
    EXPECT_EQ (log.takeEvents(), "clean");
    EXPECT_EQ (userFolder().getNumberOfChildFiles (juce::File::findFilesAndDirectories), 2);
}

TEST_F (PresetsManagerTest, ReadOnlyFolderLeavesTheOldFileWhole)
{
    const auto file = writePreset ("old.test", presetText (10.0f, 20.0f));
    product.set ("level", 99.0f);
    log.takeEvents();

    {
        const cv::test::WriteProtection protection (userFolder());
        presets.savePreset (file, false);
        presets.savePreset (userFolder().getChildFile ("new.test"), false);
    }

    EXPECT_EQ (file.loadFileAsString(), presetText (10.0f, 20.0f));
    EXPECT_EQ (presets.getCurrentPresetFile(), userFolder().getChildFile ("new.test"));
    EXPECT_FALSE (presets.getCurrentPresetFile().exists());
    EXPECT_FALSE (presets.isDirty());
    EXPECT_EQ (log.takeEvents(), "clean");
}

TEST_F (PresetsManagerTest, ListenersComeAndGo)
{
    {
        PresetListenerLog second (presets);
        product.set ("level", 10.0f);
        EXPECT_EQ (second.takeEvents(), "dirty");
    }

    presets.setDirty (false);
    EXPECT_EQ (log.takeEvents(), "dirty, clean");
}

/** Stays in its call until it is let go. */
class SlowListener final : public PresetsManager::Listener
{
public:
    void presetLoaded (PresetsManager&, const juce::File&) override {}

    void dirtyStateChanged (PresetsManager&, bool newDirty) override
    {
        heard.push_back (newDirty);
        entered.signal();
        EXPECT_TRUE (mayLeave.wait (20000));
        ++numLeft;
    }

    std::vector<bool> heard; // by one thread at a time
    juce::WaitableEvent entered { false };
    juce::WaitableEvent mayLeave { true };
    std::atomic<int> numLeft { 0 };
};

TEST_F (PresetsManagerTest, WhoSetsTheMarkWaitsForNoListener)
{
    SlowListener slow;
    presets.addListener (&slow);
    std::thread automation ([this] { presets.setDirty (true); });
    ASSERT_TRUE (slow.entered.wait (20000));

    // The other thread is in the call: these return at once, and it tells of the last one.
    presets.setDirty (false);
    presets.setDirty (true);
    presets.setDirty (false);
    EXPECT_THAT (slow.heard, testing::ElementsAre (true));

    slow.mayLeave.signal();
    automation.join();
    EXPECT_THAT (slow.heard, testing::ElementsAre (true, false));
    presets.removeListener (&slow);
}

TEST_F (PresetsManagerTest, ListenerThatIsGoneIsInNoCall)
{
    SlowListener slow;
    presets.addListener (&slow);
    std::thread automation ([this] { presets.setDirty (true); });
    ASSERT_TRUE (slow.entered.wait (20000));

    std::thread release (
        [&]
        {
            juce::Thread::sleep (20);
            slow.mayLeave.signal();
        });

    presets.removeListener (&slow);
    EXPECT_EQ (slow.numLeft, 1);
    release.join();
    automation.join();
}

TEST (PresetsManager, WorksInFoldersWithAnyNames)
{
    const PresetSandbox sandbox (juce::String::fromUTF8 ("\xc3\x89tudes \xe9\x9f\xb3 & <\"'>"));
    TestProduct product (sandbox.getLocations());
    const auto file = sandbox.getLocations().userFolder.getChildFile (
        juce::String::fromUTF8 ("\xd0\xad\xd1\x85\xd0\xbe; \xf0\x9f\x8e\xb8.test"));

    product.set ("level", 12.5f);
    product.getPresetsManager().savePreset (file, true);
    ASSERT_TRUE (file.existsAsFile());

    TestProduct another (sandbox.getLocations());
    another.getPresetsManager().loadPreset (file);
    EXPECT_EQ (another.get ("level"), 12.5f);
}
} // namespace
} // namespace cv::pluginCore
