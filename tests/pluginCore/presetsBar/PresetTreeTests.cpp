#include "pluginCore/presetsBar/PresetTree.h"

#include "pluginCore/files/FilePath.h"
#include "pluginCore/presets/PresetFile.h"
#include "support/ScratchFolder.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sys/stat.h>

namespace cv::pluginCore
{
namespace
{
class PresetTreeTest : public testing::Test
{
protected:
    /** Makes an empty file and the folders above it. */
    juce::File make (const juce::String& path) const
    {
        const auto file = bank.getChildFile (path);
        EXPECT_TRUE (file.create()) << path;
        return file;
    }

    void link (const juce::String& path, const juce::String& target) const
    {
        const auto file = bank.getChildFile (path);
        file.getParentDirectory().createDirectory();
        EXPECT_TRUE (juce::File::createSymbolicLink (file, target, false)) << path;
    }

    void makePipe (const juce::String& path) const
    {
        EXPECT_EQ (mkfifo (bank.getChildFile (path).getFullPathName().toRawUTF8(), 0600), 0);
    }

    /** The tree in one line, "a b(c d)": names without extensions, contents of folders in brackets. */
    static juce::String describe (const PresetTree& tree)
    {
        juce::StringArray names;

        for (const auto& child : tree.children)
            names.add (child.file.getFileNameWithoutExtension()
                       + (child.isFolder ? "(" + describe (child) + ")" : juce::String()));

        return names.joinIntoString (" ");
    }

    juce::String read() const { return describe (readBank (bank, ".test")); }

    const test::ScratchFolder scratch;
    const juce::File bank = scratch.getFile ("bank");
};

TEST_F (PresetTreeTest, HoldsFoldersAndPresetsInNaturalOrder)
{
    for (const auto* const name : { "Echo 10", "Echo 9", "b/d/e", "b/c", "apple", "b/f", ".hidden", ".folder/inside" })
        make (juce::String (name) + ".test");

    make ("notes/read.txt");
    EXPECT_EQ (read(), "apple b(c d(e) f) Echo 9 Echo 10");
}

TEST_F (PresetTreeTest, FolderWithHiddenPresetsAloneIsEmpty)
{
    make ("a/.b.test");
    make ("c/.d/e.test");
    EXPECT_EQ (read(), "a() c()");
}

TEST_F (PresetTreeTest, NothingHasNoPresets)
{
    EXPECT_FALSE (readBank (bank, ".test").holdsPresets);
    EXPECT_FALSE (readBank ({}, ".test").holdsPresets);
    EXPECT_FALSE (readBank (make ("a.test"), ".test").holdsPresets);
}

TEST_F (PresetTreeTest, FoldersThatLinkToEachOtherAreReadOnce)
{
    const juce::StringArray names { "a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k", "l" };

    for (const auto& name : names)
    {
        make (name + "/" + name + name + ".test");

        for (const auto& other : names)
            if (other != name)
                link (name + "/to" + other, "../" + other);
    }

    EXPECT_TRUE (read().startsWith ("a(aa) b(bb) c(cc) d(dd)")) << read();
}

TEST_F (PresetTreeTest, BankReachedThroughALinkMayHoldLinksToItself)
{
    make ("a/b.test");
    link ("a/up", "..");
    link ("self", ".");
    link ("absolute", bank.getFullPathName());
    const auto entrance = scratch.getFile ("entrance");
    ASSERT_TRUE (juce::File::createSymbolicLink (entrance, "bank", false));
    ASSERT_TRUE (juce::File::createSymbolicLink (bank.getChildFile ("back"), "../entrance", false));

    const auto tree = readBank (entrance, ".test");
    EXPECT_EQ (describe (tree), "a(b)");
    EXPECT_EQ (tree.children.front().file, entrance.getChildFile ("a"));
}

TEST_F (PresetTreeTest, FolderStandsWhereItLiesRatherThanWhereALinkLeads)
{
    make ("z/real.test");
    link ("a", "z");
    EXPECT_EQ (read(), "z(real)");
}

TEST_F (PresetTreeTest, LinksOutOfTheBankAreFollowedOnce)
{
    const auto outside = scratch.getFile ("outside/far.test");
    ASSERT_TRUE (outside.create());
    ASSERT_TRUE (scratch.getFile ("outside/deep/er.test").create());
    link ("two", "../outside");
    link ("one", "../outside");
    link ("single.test", "../outside/far.test");
    link ("three", "../outside/deep");
    EXPECT_EQ (read(), "one(deep(er) far) single");
}

TEST_F (PresetTreeTest, PresetsLieUpTo32FoldersDeep)
{
    make (juce::String::repeatedString ("d/", 32) + "last.test");
    make (juce::String::repeatedString ("d/", 33) + "beyond.test");
    const auto names = read();
    EXPECT_TRUE (names.contains ("last"));
    EXPECT_FALSE (names.contains ("beyond"));

    // JUCE's own iterators go down as far as it goes, and back to the top for each level.
    make (juce::String::repeatedString ("e/", 300) + "beyond.test");
    EXPECT_EQ (read(), names);
}

TEST_F (PresetTreeTest, OnlyRegularFilesArePresets)
{
    make ("good.test");
    makePipe ("pipe.test");
    link ("zero.test", "/dev/zero");
    link ("null.test", "/dev/null");
    link ("piped.test", "pipe.test");
    link ("broken.test", "nowhere");
    link ("linked.test", "good.test");
    EXPECT_EQ (read(), "good linked");

    EXPECT_TRUE (bank.getChildFile ("good.test").deleteFile());
    EXPECT_FALSE (readBank (bank, ".test").holdsPresets);
    EXPECT_FALSE (isVisiblePreset (bank.getChildFile ("pipe.test"), ".test"));
    EXPECT_FALSE (isVisiblePreset (bank.getChildFile ("zero.test"), ".test"));
}

TEST_F (PresetTreeTest, LargeFilesAreNoPresets)
{
    for (const auto& [name, size] : { std::pair ("large", maxPresetBytes), std::pair ("huge", maxPresetBytes + 1) })
    {
        juce::FileOutputStream stream (make (juce::String (name) + ".test"));
        stream.setPosition (size - 1);
        stream.writeByte (0);
    }

    EXPECT_EQ (read(), "large");
}

TEST_F (PresetTreeTest, NamesMayHoldOddBytes)
{
    const juce::String odd (juce::CharPointer_UTF8 ("Gitarre \xED\xA0\xBC\xED\xBE\xB8 \xff"));
    ASSERT_TRUE (make (odd + ".test").existsAsFile());
    make (odd.upToLastOccurrenceOf (" ", false, false) + "/inside.test");
    make ("a\\b\n: ~.test");

    const auto tree = readBank (bank, ".test");
    ASSERT_EQ (tree.children.size(), 3u);

    for (const auto& child : tree.children)
        EXPECT_TRUE (child.file.exists()) << child.file.getFullPathName();

    EXPECT_EQ (tree.children[1].children.size() + tree.children[2].children.size(), 1u);
}

TEST_F (PresetTreeTest, PassesOverNamesThatAreNoText)
{
    make ("Echo.test");
    const auto path = toStandardPath (bank);
    const std::vector<std::filesystem::path> oddNames { "5\x80 Echo for the long night.test", "\xc1\x81\xc1\x81.test",
                                                        "a\xc0\x80" };

    for (const auto& name : oddNames)
    {
        std::filesystem::create_directory (path / name);
        std::ofstream (path / name / "inside.test");
        std::ofstream (path / (name.native() + " file.test"));
    }

    EXPECT_EQ (read(), "Echo");

    // JUCE, which empties the folder behind the test, doesn't stand them either.
    std::filesystem::remove_all (path);
}

TEST_F (PresetTreeTest, AsksForEachFileAndFolderOnce)
{
    make ("own.test");
    make (juce::String::repeatedString ("d/", 30) + "deep.test");
    auto numAsked = 0;
    readPresetTree (bank, [&numAsked] (const juce::File&, bool) { return ++numAsked > 0; });
    EXPECT_EQ (numAsked, 32);
}

TEST_F (PresetTreeTest, EndsInALargePlaceAfterTheBanksOwn)
{
    for (auto i = 0; i < 20; ++i)
        ASSERT_TRUE (scratch.getFile ("outside/" + juce::String (i) + ".test").create());

    link ("a", "../outside");
    make ("b/c/own.test");
    auto numAsked = 0;
    const IsPreset isPreset = [&numAsked] (const juce::File& file, bool isFolder)
    {
        ++numAsked;
        return ! isFolder && file.hasFileExtension (".test");
    };

    const auto tree = readPresetTree (bank, isPreset, 10);
    EXPECT_EQ (numAsked, 10);
    ASSERT_EQ (tree.children.size(), 2u);
    EXPECT_EQ (tree.children[0].children.size(), 6u);
    EXPECT_EQ (describe (tree.children[1]), "c(own)");
}
} // namespace
} // namespace cv::pluginCore
