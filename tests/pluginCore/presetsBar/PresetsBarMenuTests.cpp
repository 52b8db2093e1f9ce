#include "support/KeptTranslations.h"
#include "support/PresetsBarFixture.h"
#include "support/WriteProtection.h"

namespace cv::pluginCore
{
namespace
{
using testing::Contains;
using testing::ElementsAre;
using testing::Not;

class PresetsBarMenuTest : public test::PresetsBarFixture
{
};

TEST_F (PresetsBarMenuTest, WithoutPresetsHoldsTheActionsAlone)
{
    EXPECT_THAT (getMenuLines(), ElementsAre ("1 Save (off)", "2 Save as...", "----", "4 Show presets location..."));
    EXPECT_TRUE (getBar().getPresetPaths().isEmpty());
}

TEST_F (PresetsBarMenuTest, WithoutFoldersHoldsTheActionsAlone)
{
    for (const auto& bank : { userFolder, factoryFolder, designerFolder })
        ASSERT_TRUE (bank.deleteRecursively());

    EXPECT_THAT (getMenuLines(), ElementsAre ("1 Save (off)", "2 Save as...", "----", "4 Show presets location..."));
}

TEST_F (PresetsBarMenuTest, ListsTheBanksUnderTheirTitles)
{
    writePreset (designerFolder, "D.test");
    writePreset (factoryFolder, "F.test");
    writePreset (userFolder, "U.test");
    writePreset (factoryFolder, "Init.test");

    EXPECT_THAT (getMenuLines(),
                 ElementsAre ("1 Save (off)", "2 Save as...", "----", "3 Init", "4 Show presets location...",
                              "[User Presets]", "5 U", "[Test Maker Presets]", "6 F", "[Designer Presets]", "7 D"));
    const juce::StringArray paths { userFolder.getChildFile ("U.test").getFullPathName(),
                                    factoryFolder.getChildFile ("F.test").getFullPathName(),
                                    designerFolder.getChildFile ("D.test").getFullPathName() };
    EXPECT_EQ (getBar().getPresetPaths(), paths);
}

TEST_F (PresetsBarMenuTest, ShowsOddNamesWithoutWhatCannotBeShaped)
{
    const auto name = juce::String::fromUTF8 ("O\x1c"
                                              "d\xcc\x81\nd");
    const auto file = writePreset (userFolder, name + "/" + name + ".test");

    EXPECT_EQ (getPresetLines(), "[User Presets]\nOd d >\n  5 Od d");
    EXPECT_EQ (getBar().getPresetPaths(), juce::StringArray (file.getFullPathName()));
}

TEST_F (PresetsBarMenuTest, ABankWithInitAloneHasATitleButNoItems)
{
    writePreset (factoryFolder, "Init.test");
    EXPECT_EQ (getPresetLines(), "[Test Maker Presets]");
    EXPECT_TRUE (getBar().getPresetPaths().isEmpty());
}

TEST_F (PresetsBarMenuTest, OffersInitOnlyAsAFileOfTheRightKind)
{
    ASSERT_TRUE (initFile.createDirectory());
    EXPECT_THAT (getMenuLines(), Not (Contains ("3 Init")));

    bar.reset();
    ASSERT_TRUE (initFile.deleteRecursively());
    writePreset (factoryFolder, "Init.test");
    EXPECT_THAT (getMenuLines(), Contains ("3 Init"));
}

TEST_F (PresetsBarMenuTest, AnInitElsewhereIsAPresetLikeOthers)
{
    writePreset (userFolder, "Init.test");
    writePreset (factoryFolder, "more/Init.test");
    EXPECT_EQ (getPresetLines(), "[User Presets]\n5 Init\n[Test Maker Presets]\nmore >\n  6 Init");
    EXPECT_THAT (getMenuLines(), Not (Contains ("3 Init")));
}

TEST_F (PresetsBarMenuTest, SortsFoldersAndFilesTogetherAsPeopleCount)
{
    for (const auto* const name : { "Echo 10", "Echo 9", "echo 9b", "Zebra", "apple", "Mango/x", "banana" })
        writePreset (userFolder, juce::String (name) + ".test");

    EXPECT_EQ (getPresetLines(), "[User Presets]\n5 apple\n6 banana\n7 Echo 9\n8 echo 9b\n9 Echo 10\nMango >\n"
                                 "  10 x\n11 Zebra");
}

TEST_F (PresetsBarMenuTest, NumbersRunThroughSubMenusWithoutGaps)
{
    for (const auto* const name : { "a", "b/c", "b/d/e", "b/f", "g" })
        writePreset (userFolder, juce::String (name) + ".test");

    writePreset (designerFolder, "h.test");

    EXPECT_EQ (getPresetLines(),
               "[User Presets]\n5 a\nb >\n  6 c\n  d >\n    7 e\n  8 f\n9 g\n[Designer Presets]\n10 h");
    EXPECT_EQ (getBar().getPresetPaths().size(), 6);
    EXPECT_EQ (getBar().getPresetPaths()[2], userFolder.getChildFile ("b/d/e.test").getFullPathName());
}

TEST_F (PresetsBarMenuTest, TicksTheCurrentPresetAndTheWayToIt)
{
    writePreset (userFolder, "a/b/other.test");
    const auto current = writePreset (userFolder, "a/b/this.test");
    writePreset (userFolder, "a/d.test");
    writePreset (userFolder, "ab/this.test");
    presets.loadPreset (current);

    EXPECT_EQ (getPresetLines(), "[User Presets]\na * >\n  b * >\n    5 other\n    6 this *\n  7 d\nab >\n  8 this");
}

TEST_F (PresetsBarMenuTest, TheTickStaysWhenTheSoundHasChanged)
{
    presets.loadPreset (writePreset (userFolder, "Echo.test"));
    product.set ("level", 12.0f);

    EXPECT_EQ (getPresetLines(), "[User Presets]\n5 Echo *");
    EXPECT_EQ (getText(), "Echo*");
}

TEST_F (PresetsBarMenuTest, FoldersWithoutPresetsHaveNoSubMenu)
{
    ASSERT_TRUE (userFolder.getChildFile ("notes/read.txt").create());
    ASSERT_TRUE (userFolder.getChildFile ("empty").createDirectory());
    EXPECT_EQ (getPresetLines(), "");

    bar.reset();
    writePreset (userFolder, "one/two/three.test");
    ASSERT_TRUE (userFolder.getChildFile ("one/read.txt").create());
    EXPECT_EQ (getPresetLines(), "[User Presets]\none >\n  two >\n    5 three");
}

TEST_F (PresetsBarMenuTest, HiddenFilesStayHidden)
{
    writePreset (userFolder, ".hidden.test");
    writePreset (userFolder, ".folder/inside.test");
    writePreset (userFolder, "seen.test");
    EXPECT_EQ (getPresetLines(), "[User Presets]\n5 seen");
    EXPECT_EQ (getBar().getPresetPaths().size(), 1);
}

TEST_F (PresetsBarMenuTest, KnowsPresetsByTheirExtension)
{
    for (const auto* const name : { "a.test", "b.TEST", "c.testing", "d", "e.test.bak", "f.g.test" })
        ASSERT_TRUE (userFolder.getChildFile (name).create());

    EXPECT_EQ (getPresetLines(), "[User Presets]\n5 a\n6 b\n7 f.g");
}

TEST_F (PresetsBarMenuTest, BrokenAndCircularLinksDoNoHarm)
{
    writePreset (userFolder, "a/b.test");
    const auto folder = userFolder.getChildFile ("a");
    ASSERT_TRUE (juce::File::createSymbolicLink (folder.getChildFile ("broken.test"), "nowhere.test", false));

    for (const auto* const name : { "up1", "up2", "up3" })
        ASSERT_TRUE (juce::File::createSymbolicLink (folder.getChildFile (name), "..", false));

    EXPECT_EQ (getPresetLines(), "[User Presets]\na >\n  5 b");
}

TEST_F (PresetsBarMenuTest, LinkedFoldersAreFollowed)
{
    const auto elsewhere = sandbox.getFile ("elsewhere");
    writePreset (elsewhere, "far.test");
    ASSERT_TRUE (juce::File::createSymbolicLink (userFolder.getChildFile ("link"), elsewhere.getFullPathName(), false));
    EXPECT_EQ (getPresetLines(), "[User Presets]\nlink >\n  5 far");
}

TEST_F (PresetsBarMenuTest, SaveIsForTheUsersOwnPresets)
{
    const auto canSave = [this]
    {
        bar.reset();
        return getMenuLines().front() == "1 Save";
    };

    EXPECT_FALSE (canSave());

    for (const auto& bank : { factoryFolder, designerFolder, sandbox.getFile ("outside") })
    {
        presets.loadPreset (writePreset (bank, "a.test"));
        EXPECT_FALSE (canSave()) << bank.getFullPathName();
    }

    const auto own = writePreset (userFolder, "a/b.test");
    presets.loadPreset (own);
    EXPECT_TRUE (canSave());

    ASSERT_TRUE (own.deleteFile());
    EXPECT_FALSE (canSave());

    ASSERT_TRUE (own.createDirectory());
    EXPECT_FALSE (canSave());
}

TEST_F (PresetsBarMenuTest, SaveNeedsWriteAccess)
{
    const auto own = writePreset (userFolder, "a.test");
    presets.loadPreset (own);
    ASSERT_TRUE (own.setReadOnly (true));
    {
        const test::WriteProtection protection (userFolder);
        EXPECT_EQ (getMenuLines().front(), "1 Save (off)");
    }

    ASSERT_TRUE (own.setReadOnly (false));
    bar.reset();
    EXPECT_EQ (getMenuLines().front(), "1 Save");
}

TEST_F (PresetsBarMenuTest, SpeaksTheLanguageInForce)
{
    const test::KeptTranslations kept;
    juce::LocalisedStrings::setCurrentMappings (new juce::LocalisedStrings (
        "language: test\ncountries: xx\n\"Save\" = \"S\"\n\"Save as\" = \"SA\"\n\"Init\" = \"I\"\n"
        "\"Show presets location\" = \"SPL\"\n\"User Presets\" = \"UP\"\n\"Test Maker Presets\" = \"TMP\"\n"
        "\"Designer Presets\" = \"DP\"\n",
        false));

    for (const auto& bank : { userFolder, factoryFolder, designerFolder })
        writePreset (bank, "Save.test");

    writePreset (factoryFolder, "Init.test");

    EXPECT_THAT (getMenuLines(), ElementsAre ("1 S (off)", "2 SA...", "----", "3 I", "4 SPL...", "[UP]", "5 Save",
                                              "[TMP]", "6 Save", "[DP]", "7 Save"));
}
} // namespace
} // namespace cv::pluginCore
