#include "pluginCore/presets/PresetLocations.h"

#include "support/ScratchFolder.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>

#include <cstdlib>

namespace cv::pluginCore
{
namespace
{
using cv::test::ScratchFolder;
using cv::test::TemporaryHome;

#if JUCE_LINUX
TEST (PresetFolders, FollowTheSystemsCustom)
{
    const TemporaryHome home;
    const auto folders = DataFolders::ofThisSystem();

    EXPECT_EQ (folders.machine.getFullPathName(), "/usr/share");
    EXPECT_EQ (folders.user, home.getFile (".local/share"));
}

TEST (PresetFolders, AskNoEnvironmentForTheirPlace)
{
    const TemporaryHome home;
    const ScratchFolder elsewhere;
    const auto former = juce::SystemStats::getEnvironmentVariable ("XDG_DATA_HOME", {});

    setenv ("XDG_DATA_HOME", elsewhere.getFolder().getFullPathName().toRawUTF8(), 1);
    const auto folders = DataFolders::ofThisSystem();

    if (former.isEmpty())
        unsetenv ("XDG_DATA_HOME");
    else
        setenv ("XDG_DATA_HOME", former.toRawUTF8(), 1);

    EXPECT_EQ (folders.machine.getFullPathName(), "/usr/share");
    EXPECT_EQ (folders.user, home.getFile (".local/share"));
}
#endif

TEST (PresetFolders, AreMadeBeneathCompanyAndProduct)
{
    const ScratchFolder scratch;
    const auto locations =
        createPresetFolders ({ scratch.getFile ("machine"), scratch.getFile ("user") }, "Maker", "Product", ".test");

    EXPECT_EQ (locations.factoryFolder, scratch.getFile ("machine/Maker/Product/presets"));
    EXPECT_EQ (locations.userFolder, scratch.getFile ("user/Maker/Product/presets"));
    EXPECT_EQ (locations.designerFolder, scratch.getFile ("machine/Maker/Product/DesignersPresets"));
    EXPECT_EQ (locations.initPresetFile, scratch.getFile ("machine/Maker/Product/presets/Init.test"));
    EXPECT_EQ (locations.presetExtension, ".test");

    for (const auto bank : presetBanks)
        EXPECT_TRUE (locations.getFolder (bank).isDirectory()) << getPresetBankName (bank);

    EXPECT_FALSE (locations.initPresetFile.exists());
}

TEST (PresetFolders, StayAsTheyAreWhereTheyExist)
{
    const ScratchFolder scratch;
    const auto create = [&] {
        return createPresetFolders ({ scratch.getFolder(), scratch.getFolder() }, "Maker", "Product", ".test");
    };

    const auto preset = create().userFolder.getChildFile ("mine.test");
    preset.replaceWithText ("text");
    const auto before = scratch.getContents();
    create();

    EXPECT_EQ (scratch.getContents(), before);
    EXPECT_EQ (preset.loadFileAsString(), "text");
}

TEST (PresetFolders, ThatCannotBeMadeAreLeftOut)
{
    const ScratchFolder scratch;
    const auto notAFolder = scratch.getFile ("file");
    notAFolder.replaceWithText ("text");
    const auto locations = createPresetFolders ({ notAFolder, scratch.getFolder() }, "Maker", "Product", ".test");

    EXPECT_FALSE (locations.factoryFolder.exists());
    EXPECT_FALSE (locations.designerFolder.exists());
    EXPECT_TRUE (locations.userFolder.isDirectory());
    EXPECT_EQ (notAFolder.loadFileAsString(), "text");
}

TEST (PresetBanks, HaveNamesAndAnOrder)
{
    EXPECT_THAT (presetBanks, testing::ElementsAre (PresetBank::factory, PresetBank::user, PresetBank::designer));
    EXPECT_EQ (getPresetBankName (PresetBank::factory), "FACTORY");
    EXPECT_EQ (getPresetBankName (PresetBank::user), "USER");
    EXPECT_EQ (getPresetBankName (PresetBank::designer), "DESIGNER");

    for (const auto bank : presetBanks)
        EXPECT_EQ (findPresetBank (getPresetBankName (bank)), bank);

    EXPECT_EQ (findPresetBank ("user"), std::nullopt);
    EXPECT_EQ (findPresetBank (""), std::nullopt);
}

TEST (PresetBanks, HoldFilesAtAnyDepthAndTheFirstThatHoldsOneWins)
{
    const ScratchFolder scratch;
    const auto root = scratch.getFolder();
    const PresetLocations locations {
        root.getChildFile ("a/b"), root.getChildFile ("a"), root.getChildFile ("a/c"), {}, {}
    };

    EXPECT_EQ (locations.findBankOf (root.getChildFile ("a/b/x/y.test")), PresetBank::factory);
    EXPECT_EQ (locations.findBankOf (root.getChildFile ("a/c/y.test")), PresetBank::user);
    EXPECT_EQ (locations.findBankOf (root.getChildFile ("ab/y.test")), std::nullopt);
    EXPECT_EQ (locations.findBankOf (root.getChildFile ("a")), std::nullopt);
    EXPECT_EQ (locations.findBankOf ({}), std::nullopt);
}
} // namespace
} // namespace cv::pluginCore
