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
