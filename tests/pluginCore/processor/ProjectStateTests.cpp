#include "support/CurrentPresetLog.h"
#include "support/PresetListenerLog.h"
#include "support/PresetSandbox.h"
#include "support/TestProduct.h"

#include <gmock/gmock.h>

namespace cv::pluginCore
{
namespace
{
using cv::test::CurrentPresetLog;
using cv::test::PresetListenerLog;
using cv::test::PresetSandbox;
using cv::test::TestProduct;

juce::MemoryBlock saveProject (TestProduct& product)
{
    juce::MemoryBlock chunk;
    product.getStateInformation (chunk);
    return chunk;
}

juce::String textOf (const juce::MemoryBlock& chunk)
{
    const auto xml = juce::AudioProcessor::getXmlFromBinary (chunk.getData(), (int) chunk.getSize());
    return xml->toString (juce::XmlElement::TextFormat().singleLine().withoutHeader());
}

void openProject (TestProduct& product, const juce::MemoryBlock& chunk)
{
    product.setStateInformation (chunk.getData(), (int) chunk.getSize());
}

/** Opens a project that holds just this text. */
void openProject (TestProduct& product, const juce::String& text)
{
    juce::MemoryBlock chunk;
    juce::AudioProcessor::copyXmlToBinary (*juce::parseXML (text), chunk);
    openProject (product, chunk);
}

class ProjectStateTest : public testing::Test
{
protected:
    ProjectStateTest() { product.initialise(); }

    const PresetLocations& locations() const { return sandbox.getLocations(); }

    juce::File makeCurrent (const juce::File& file)
    {
        product.getPresetsManager().savePreset (file, false);
        return file;
    }

    juce::String lastPresetXml()
    {
        return textOf (saveProject (product))
            .fromFirstOccurrenceOf ("<lastPreset", true, false)
            .upToFirstOccurrenceOf ("/>", true, false);
    }

    const PresetSandbox sandbox;
    TestProduct product { sandbox.getLocations() };
    PresetListenerLog log { product.getPresetsManager() };
};

TEST_F (ProjectStateTest, OfAFreshInstanceHasNoPresetAndNoSize)
{
    EXPECT_EQ (textOf (saveProject (product)),
               "<TestProduct version=\"2.3.4\" lockedParams=\"\"><PARAMS><PARAM id=\"level\" value=\"50.0\"/>"
               "<PARAM id=\"time\" value=\"100.0\"/></PARAMS><Settings/></TestProduct>");
}

TEST_F (ProjectStateTest, HasAllPartsInTheirOrder)
{
    product.setEditorSize (400, 300);
    product.dataTree.setProperty ("d", 1, nullptr);
    makeCurrent (locations().userFolder.getChildFile ("a.test"));
    openProject (product, textOf (saveProject (product)).replace ("lockedParams=\"\"", "lockedParams=\"level;time\""));

    EXPECT_EQ (textOf (saveProject (product)),
               "<TestProduct version=\"2.3.4\" pluginEditorWidth=\"400\" pluginEditorHeight=\"300\" "
               "lockedParams=\"level;time\">"
               "<PARAMS><PARAM id=\"level\" value=\"50.0\"/><PARAM id=\"time\" value=\"100.0\"/></PARAMS>"
               "<Settings/><Data d=\"1\"/><lastPreset root=\"USER\" path=\"a.test\" "
               "dirty=\"0\"/></TestProduct>");
}

TEST_F (ProjectStateTest, RemembersThePresetByBankAndPath)
{
    makeCurrent (locations().factoryFolder.getChildFile ("a.test"));
    EXPECT_EQ (lastPresetXml(), "<lastPreset root=\"FACTORY\" path=\"a.test\" dirty=\"0\"/>");

    makeCurrent (locations().designerFolder.getChildFile ("Ada/b.test"));
    product.set ("level", 10.0f);
    EXPECT_EQ (lastPresetXml(), "<lastPreset root=\"DESIGNER\" path=\"Ada/b.test\" dirty=\"1\"/>");

    makeCurrent (sandbox.getFile ("elsewhere.test"));
    EXPECT_EQ (lastPresetXml(), "<lastPreset path=\"\" dirty=\"0\"/>");
}

TEST_F (ProjectStateTest, FindsThePresetInAnotherUsersFolders)
{
    makeCurrent (locations().userFolder.getChildFile (juce::String::fromUTF8 ("sub/d\xc3\xa9j\xc3\xa0 & vu.test")));
    const auto chunk = saveProject (product);

    const PresetSandbox otherHome;
    TestProduct another (otherHome.getLocations());
    another.initialise();
    openProject (another, chunk);
    EXPECT_EQ (
        another.getPresetsManager().getCurrentPresetFile(),
        otherHome.getLocations().userFolder.getChildFile (juce::String::fromUTF8 ("sub/d\xc3\xa9j\xc3\xa0 & vu.test")));
    EXPECT_FALSE (another.getPresetsManager().isDirty());
}

/** A file name of up to 255 bytes from all that a string can hold, halves of surrogate pairs included. */
std::string makeFileName (juce::Random& random, const juce::String& extension)
{
    static constexpr juce::juce_wchar ends[] {
        0x20, 0x80, 0xa0, 0x250, 0x800, 0x3000, 0xd800, 0xe000, 0x10000, 0x110000
    };
    constexpr auto maxBytes = 255;
    std::string name;

    for (auto i = random.nextInt (40) + 1; --i >= 0;)
    {
        const auto end = ends[(size_t) random.nextInt ((int) std::size (ends))];
        const auto character = (juce::juce_wchar) (end - 1 - random.nextInt (juce::jmin ((int) end - 1, 0x7ff)));
        const auto bytes = juce::String::charToString (character).toStdString();

        if (character != '/' && name.size() + bytes.size() + extension.getNumBytesAsUTF8() <= maxBytes)
            name += bytes;
    }

    return name + extension.toStdString();
}

TEST_F (ProjectStateTest, RemembersPresetsOfAnyName)
{
    juce::Random random (5);

    for (auto i = 0; i < 2000; ++i)
    {
        const auto name = makeFileName (random, ".test");
        const auto folder = i % 2 == 0 ? locations().userFolder : locations().designerFolder.getChildFile ("d");
        const juce::File file (folder.getFullPathName() + "/" + juce::String (juce::CharPointer_UTF8 (name.c_str())));
        product.getPresetsManager().setCurrentPresetFile (file);
        const auto chunk = saveProject (product);

        TestProduct reopened (locations());
        reopened.initialise();
        reopened.set ("level", 7.0f);
        openProject (reopened, chunk);

        ASSERT_FLOAT_EQ (reopened.get ("level"), 50.0f) << name;
        ASSERT_EQ (reopened.getPresetsManager().getCurrentPresetFile(), file) << name;
        ASSERT_EQ (saveProject (reopened), chunk) << name;
    }
}

TEST_F (ProjectStateTest, RemembersAPresetNamedInSurrogates)
{
    const juce::String name (juce::CharPointer_UTF8 ("Gitarre \xED\xA0\xBC\xED\xBE\xB8.test"));
    const auto file = makeCurrent (locations().userFolder.getChildFile (name));
    EXPECT_TRUE (file.existsAsFile());
    EXPECT_EQ (lastPresetXml(), "<lastPreset root=\"USER\" path=\"Gitarre &#55356;&#57272;.test\" dirty=\"0\"/>");

    TestProduct reopened (locations());
    openProject (reopened, saveProject (product));
    EXPECT_EQ (reopened.getPresetsManager().getCurrentPresetFile(), file);
}

TEST_F (ProjectStateTest, PresetsNameMayBeginWithATilde)
{
    for (const auto& name : { juce::String ("~a.test"), "~" + juce::String::repeatedString ("z", 300) })
    {
        const auto file = makeCurrent (locations().userFolder.getChildFile ("./" + name));
        const auto chunk = saveProject (product);
        product.getPresetsManager().setCurrentPresetFile ({});
        openProject (product, chunk);

        EXPECT_EQ (product.getPresetsManager().getCurrentPresetFile(), file);
        EXPECT_EQ (saveProject (product), chunk);
    }
}

TEST_F (ProjectStateTest, PathOfAnyDepthIsKept)
{
    // As deep as a path can be; one level costs no more than its two characters.
    const auto path = juce::String::repeatedString ("a/", 16380) + "a.test";
    openProject (product, "<TestProduct><lastPreset root='USER' path='" + path + "' dirty='0'/></TestProduct>");

    EXPECT_EQ (product.getPresetsManager().getCurrentPresetFile().getFullPathName(),
               locations().userFolder.getFullPathName() + "/" + path);
    EXPECT_EQ (lastPresetXml(), "<lastPreset root=\"USER\" path=\"" + path + "\" dirty=\"0\"/>");
}

TEST_F (ProjectStateTest, PathLongerThanAnyFilesIsForgotten)
{
    const auto current = makeCurrent (locations().userFolder.getChildFile ("a.test"));

    // Two of these take JUCE minutes, or its stack.
    for (const auto& path :
         { juce::String::repeatedString ("a/", 1000000), juce::String::repeatedString ("a/../", 1000000),
           juce::String::repeatedString ("z", 32768) })
    {
        openProject (product, "<TestProduct><lastPreset root='FACTORY' path='" + path + "' dirty='1'/></TestProduct>");
        EXPECT_EQ (product.getPresetsManager().getCurrentPresetFile(), current);
        EXPECT_TRUE (product.getPresetsManager().isDirty());
    }

    EXPECT_EQ (lastPresetXml(), "<lastPreset root=\"USER\" path=\"a.test\" dirty=\"1\"/>");
}

TEST_F (ProjectStateTest, PresetWithoutAKnownBankKeepsTheCurrentOne)
{
    const auto current = makeCurrent (locations().userFolder.getChildFile ("a.test"));

    for (const auto* root : { "", "root='user'", "root='OTHER'", "root=''" })
        openProject (product,
                     "<TestProduct><lastPreset " + juce::String (root) + " path='b.test' dirty='1'/></TestProduct>");

    EXPECT_EQ (product.getPresetsManager().getCurrentPresetFile(), current);
    EXPECT_TRUE (product.getPresetsManager().isDirty());
}

TEST_F (ProjectStateTest, PresetThatNoLongerExistsStaysCurrentByName)
{
    openProject (product, "<TestProduct><lastPreset root='FACTORY' path='gone.test' dirty='0'/></TestProduct>");
    EXPECT_EQ (product.getPresetsManager().getCurrentPresetFile(),
               locations().factoryFolder.getChildFile ("gone.test"));
}

TEST_F (ProjectStateTest, DirtyProjectComesBackDirtyThoughNoParameterMoves)
{
    openProject (product, "<TestProduct><lastPreset root='USER' path='a.test' dirty='1'/></TestProduct>");
    EXPECT_TRUE (product.getPresetsManager().isDirty());
    EXPECT_EQ (log.takeEvents(), "dirty");
}

TEST_F (ProjectStateTest, CleanProjectComesBackCleanThoughParametersMove)
{
    openProject (product, "<TestProduct><PARAMS><PARAM id='level' value='10'/><PARAM id='time' value='20'/></PARAMS>"
                          "<lastPreset root='USER' path='a.test' dirty='0'/></TestProduct>");
    EXPECT_FALSE (product.getPresetsManager().isDirty());
    EXPECT_EQ (log.takeEvents(), "dirty, clean");
}

TEST_F (ProjectStateTest, PresetIsCurrentBeforeTheParametersMove)
{
    const CurrentPresetLog presetsAtMoves (product, "level");
    openProject (product, "<TestProduct><PARAMS><PARAM id='level' value='10'/></PARAMS>"
                          "<lastPreset root='USER' path='a.test' dirty='0'/></TestProduct>");
    EXPECT_EQ (presetsAtMoves.names, juce::StringArray ("a.test"));
}

TEST_F (ProjectStateTest, EmptySettingsEmptyTheSettings)
{
    product.settingsTree.setProperty ("s", 1, nullptr);
    product.settingsTree.appendChild (juce::ValueTree ("child"), nullptr);
    openProject (product, "<TestProduct><Settings/></TestProduct>");

    EXPECT_EQ (product.settingsTree.getNumProperties(), 0);
    EXPECT_EQ (product.settingsTree.getNumChildren(), 0);
    EXPECT_TRUE (textOf (saveProject (product)).contains ("<Settings/>"));
}

TEST_F (ProjectStateTest, MarkIsReadByItsFirstLetter)
{
    const auto dirtyAfter = [this] (const juce::String& value)
    {
        product.getPresetsManager().setDirty (value == "0" || value == "false" || value.isEmpty());
        openProject (product, "<TestProduct><lastPreset dirty='" + value + "'/></TestProduct>");
        return product.getPresetsManager().isDirty();
    };

    for (const auto* value : { "1", "true", "T", "yes", "Y", "10" })
        EXPECT_TRUE (dirtyAfter (value)) << value;

    for (const auto* value : { "0", "false", "2", "" })
        EXPECT_FALSE (dirtyAfter (value)) << value;
}

TEST_F (ProjectStateTest, WithoutAMarkTheParametersDecide)
{
    openProject (
        product,
        "<TestProduct><PARAMS><PARAM id='level' value='50'/><PARAM id='time' value='100'/></PARAMS></TestProduct>");
    EXPECT_EQ (log.takeEvents(), "");

    openProject (
        product,
        "<TestProduct><PARAMS><PARAM id='level' value='10'/></PARAMS><lastPreset root='USER' path='a'/></TestProduct>");
    EXPECT_EQ (log.takeEvents(), "dirty");
}

TEST_F (ProjectStateTest, OfAnotherProductStillSetsPresetMarkAndLocks)
{
    openProject (product,
                 "<Other pluginEditorWidth='9' lockedParams='level'><PARAMS><PARAM id='level' value='10'/></PARAMS>"
                 "<lastPreset root='USER' path='a.test' dirty='1'/></Other>");

    EXPECT_EQ (product.get ("level"), 50.0f);
    EXPECT_EQ (product.getEditorWidth(), -1);
    EXPECT_EQ (product.getPresetsManager().getCurrentPresetFile(), locations().userFolder.getChildFile ("a.test"));
    EXPECT_TRUE (product.getPresetsManager().isDirty());
    EXPECT_TRUE (textOf (saveProject (product)).contains ("lockedParams=\"level\""));
}

TEST_F (ProjectStateTest, WhatDoesNotParseChangesNothing)
{
    makeCurrent (locations().userFolder.getChildFile ("a.test"));
    product.set ("level", 10.0f);
    product.setEditorSize (400, 300);
    const auto before = saveProject (product);
    log.takeEvents();

    auto cut = before;
    cut.setSize (before.getSize() - 30);
    openProject (product, cut);
    product.setStateInformation ("VC2!\0\0\0\0", 9);
    product.setStateInformation (nullptr, 0);

    EXPECT_EQ (saveProject (product), before);
    EXPECT_EQ (log.takeEvents(), "");
    product.processOneBlock();
    EXPECT_EQ (product.numResets, 0);
}

TEST_F (ProjectStateTest, NeverOpenedEditorIsForgottenOnRestore)
{
    const auto chunk = saveProject (product);
    product.setEditorSize (400, 300);
    openProject (product, chunk);

    EXPECT_EQ (product.getEditorWidth(), -1);
    EXPECT_EQ (product.getEditorHeight(), -1);
}

TEST_F (ProjectStateTest, PresetIsAProjectWithoutTheRest)
{
    product.setEditorSize (400, 300);
    const auto preset = makeCurrent (locations().userFolder.getChildFile ("a.test"));
    product.set ("level", 10.0f);
    openProject (product, preset.loadFileAsString());

    EXPECT_EQ (product.get ("level"), 50.0f);
    EXPECT_EQ (product.getEditorWidth(), -1);
    EXPECT_EQ (product.getPresetsManager().getCurrentPresetFile(), preset);
}

TEST_F (ProjectStateTest, IsThereWithoutAudioAndAfterManyRestores)
{
    product.set ("level", 10.0f);
    const auto chunk = saveProject (product);

    for (auto i = 0; i < 3; ++i)
        openProject (product, chunk);

    EXPECT_EQ (saveProject (product), chunk);
    product.processOneBlock();
    product.processOneBlock();
    EXPECT_EQ (product.numResets, 1);
}
} // namespace
} // namespace cv::pluginCore
