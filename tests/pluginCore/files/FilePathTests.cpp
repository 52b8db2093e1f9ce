#include "pluginCore/files/FilePath.h"

#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace cv::pluginCore
{
namespace
{
TEST (FilePath, TellsWhatLiesBelowAFolderAsJuceDoes)
{
    // All but the root, which JUCE takes for a child of itself.
    const juce::StringArray paths { "/a",     "/a/b", "/a/b/c",   "/ab",       "/a b",        "/A",
                                    "/a/.b",  "/..",  "/a/b/c/d", "/a\\b",     "/a/b c/d",    "/b",
                                    "/a/b/C", "/a/~", "/tmp/~x",  "/a/b/cd/e", juce::String() };

    for (const auto& path : paths)
        for (const auto& folderPath :
             { juce::String ("/"), path, juce::String ("/a"), juce::String ("/a/b"), juce::String ("/ab"),
               juce::String ("/A"), juce::String ("/tmp"), juce::String() })
        {
            const auto file = juce::File::createFileWithoutCheckingPath (path);
            const auto folder = juce::File::createFileWithoutCheckingPath (folderPath);
            EXPECT_EQ (isBelowFolder (file, folder), file.isAChildOf (folder)) << path << " below " << folderPath;
        }
}

TEST (FilePath, MeasuresPathsOfAnyDepth)
{
    // JUCE's own question overflows the stack here.
    const auto deep = juce::File::createFileWithoutCheckingPath (juce::String::repeatedString ("/a", 1000000));
    EXPECT_TRUE (isBelowFolder (deep, juce::File ("/a/a")));
    EXPECT_FALSE (isBelowFolder (deep, juce::File ("/a/b")));
    EXPECT_FALSE (isBelowFolder (juce::File ("/a/a"), deep));
}

TEST (FilePath, TextHasTheNamesBytes)
{
    for (const auto* const name : { "", "a.test", "d\xc3\xa9j\xc3\xa0", "Gitarre \xED\xA0\xBC\xED\xBE\xB8",
                                    "Caf\xe9.test", "\xff", "\x81\x81", "\xe2", "\xf4\x8f\xbf\xbf" })
    {
        const auto text = toText (name);
        ASSERT_TRUE (text.has_value()) << name;
        EXPECT_STREQ (text->toRawUTF8(), name);
    }
}

TEST (FilePath, NamesThatJuceMeasuresTooShortAreNoText)
{
    // An end amid the bytes, in one and in two of them, and characters in more bytes than they take.
    for (const auto* const name : { "5\x80 Echo for the long night.test", "a\xc0\x80", "\xc1\x81\xc1\x81.test",
                                    "\xe0\x81\x81", "\xf0\x80\x80\xa0" })
        EXPECT_FALSE (toText (name).has_value()) << name;
}

TEST (FilePath, TextOfAnyBytesFitsItsMemory)
{
    juce::Random random (3);

    for (auto i = 0; i < 20000; ++i)
    {
        std::string name;

        for (auto left = random.nextInt (60); --left >= 0;)
            name += (char) (random.nextInt (4) == 0 ? 'a' + random.nextInt (26) : 1 + random.nextInt (255));

        const auto text = toText (name);
        EXPECT_TRUE (! text || text->toStdString() == name) << i;
    }
}

TEST (FilePath, RegularFilesAreNeitherFoldersNorPipesNorDevices)
{
    const test::ScratchFolder scratch;
    const auto file = scratch.getFile ("a.txt");
    file.replaceWithText ("a");
    EXPECT_TRUE (isRegularFile (file));

    const auto oddlyNamed = scratch.getFile (juce::String (juce::CharPointer_UTF8 ("Gitarre \xED\xA0\xBC \xff")));
    ASSERT_TRUE (oddlyNamed.create());
    EXPECT_TRUE (isRegularFile (oddlyNamed));

    const auto link = scratch.getFile ("link");
    ASSERT_TRUE (juce::File::createSymbolicLink (link, "a.txt", false));
    EXPECT_TRUE (isRegularFile (link));

    const auto pipe = scratch.getFile ("pipe");
    ASSERT_EQ (mkfifo (pipe.getFullPathName().toRawUTF8(), 0600), 0);

    for (const auto& other : { pipe, scratch.getFolder(), scratch.getFile ("missing"), juce::File ("/dev/zero"),
                               juce::File ("/dev/null"), juce::File() })
        EXPECT_FALSE (isRegularFile (other)) << other.getFullPathName();

    for (const auto* const target : { "pipe", "/dev/zero", "missing", "link" })
    {
        link.deleteFile();
        ASSERT_TRUE (juce::File::createSymbolicLink (link, target, false));
        EXPECT_FALSE (isRegularFile (link)) << target;
    }
}
} // namespace
} // namespace cv::pluginCore
