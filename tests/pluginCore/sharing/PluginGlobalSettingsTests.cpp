#include "pluginCore/sharing/PluginGlobalSettings.h"

#include "pluginCore/state/XmlText.h"
#include "support/PresetSandbox.h"
#include "support/TemporaryHome.h"
#include "support/TestProduct.h"
#include "support/WriteProtection.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace cv::pluginCore
{
namespace
{
using cv::test::PresetSandbox;
using cv::test::TemporaryHome;
using cv::test::TestProduct;

const ProductInfo product { "Test Product", "2.3.4", "Test Maker" };

class PluginGlobalSettingsTest : public testing::Test
{
protected:
    /** What the file's one key holds, as text; empty where there is no file. */
    static juce::String stored()
    {
        const auto xml = juce::parseXML (file());

        if (xml == nullptr)
            return {};

        EXPECT_EQ (xml->getTagName(), "PROPERTIES");
        EXPECT_EQ (xml->getNumChildElements(), 1);
        const auto* value = xml->getChildByName ("VALUE");
        EXPECT_EQ (value->getStringAttribute ("name"), "settings");
        return value->getFirstChildElement()->toString (juce::XmlElement::TextFormat().singleLine().withoutHeader());
    }

    static juce::File file()
    {
        juce::PropertiesFile::Options options;
        options.applicationName = "Test Product";
        options.filenameSuffix = "settings";
        options.folderName = "Test Maker/Test Product";
        options.osxLibrarySubFolder = "Application Support";
        return options.getDefaultFile();
    }

    static void write (const juce::String& text)
    {
        file().create();
        file().replaceWithText (text);
    }

    const TemporaryHome home;
};

TEST_F (PluginGlobalSettingsTest, LieInTheUsersHome)
{
    EXPECT_TRUE (file().isAChildOf (home.getFolder()));
    EXPECT_EQ (PluginGlobalSettings::getInnerData (product)->file.getFile(), file());
}

TEST_F (PluginGlobalSettingsTest, StartEmptyWithoutAFile)
{
    const PluginGlobalSettings settings (product);
    EXPECT_TRUE (settings.getValues().hasType ("settings"));
    EXPECT_EQ (settings.getValues().getNumProperties(), 0);
    EXPECT_EQ (settings.getValues().getProperty ("checkForUpdates", "1").toString(), "1");
}

TEST_F (PluginGlobalSettingsTest, AreSharedAtOnceWithoutAFile)
{
    const PluginGlobalSettings first (product);
    const PluginGlobalSettings second (product);
    first.getValues().setProperty ("defaultWidth", "800", nullptr);

    EXPECT_EQ (second.getValues()["defaultWidth"].toString(), "800");
    EXPECT_FALSE (file().exists());
}

TEST_F (PluginGlobalSettingsTest, AreWrittenWhenTheLastHandleGoes)
{
    auto first = std::make_unique<PluginGlobalSettings> (product);
    auto second = std::make_unique<PluginGlobalSettings> (*first);
    first->getValues().setProperty ("defaultWidth", "800", nullptr);
    first->getValues().setProperty ("lastVersionCheck", "1742850000000", nullptr);

    first.reset();
    EXPECT_FALSE (file().exists());
    second.reset();
    EXPECT_EQ (stored(), "<settings defaultWidth=\"800\" lastVersionCheck=\"1742850000000\"/>");
}

TEST_F (PluginGlobalSettingsTest, AreReadAgainByTheNextFirstHandle)
{
    PluginGlobalSettings (product).getValues().setProperty ("defaultWidth", "800", nullptr);
    EXPECT_EQ (PluginGlobalSettings (product).getValues()["defaultWidth"].toString(), "800");

    write (file().loadFileAsString().replace ("800", "900"));
    const PluginGlobalSettings settings (product);
    EXPECT_EQ (settings.getValues()["defaultWidth"].toString(), "900");

    write (file().loadFileAsString().replace ("900", "1000"));
    EXPECT_EQ (PluginGlobalSettings (product).getValues()["defaultWidth"].toString(), "900");
}

TEST_F (PluginGlobalSettingsTest, AreReadFromAnAttributeToo)
{
    write (
        "<PROPERTIES><VALUE name=\"settings\" val=\"&lt;settings defaultWidth=&quot;700&quot;/&gt;\"/></PROPERTIES>");
    EXPECT_EQ (PluginGlobalSettings (product).getValues()["defaultWidth"].toString(), "700");
}

TEST_F (PluginGlobalSettingsTest, AreReadFromALongFileToo)
{
    const auto filler = juce::String::repeatedString ("x", 9000); // more than JUCE looks at first
    const juce::String value ("<VALUE name='settings'><settings defaultWidth='700'/></VALUE></PROPERTIES>");

    write ("<PROPERTIES><!--" + filler + "-->" + value);
    EXPECT_EQ (PluginGlobalSettings (product).getValues()["defaultWidth"].toString(), "700");

    // What JUCE looks at first ends within the tag.
    write ("<PROPERTIES a='" + filler + "'>" + value);
    EXPECT_EQ (PluginGlobalSettings (product).getValues().getNumProperties(), 0);
}

TEST_F (PluginGlobalSettingsTest, StartEmptyFromABrokenFile)
{
    for (const auto* text :
         { "", "junk", "<PROPERTIES>", "<PROPERTIES/>", "<OTHER><VALUE name='settings' val='x'/></OTHER>",
           "<PROPERTIES><VALUE name='settings' val='&lt;settings'/></PROPERTIES>" })
    {
        write (text);
        const PluginGlobalSettings settings (product);
        EXPECT_TRUE (settings.getValues().hasType ("settings")) << text;
        EXPECT_EQ (settings.getValues().getNumProperties(), 0) << text;
    }
}

TEST_F (PluginGlobalSettingsTest, StartEmptyFromAFileThatWouldHarmTheReader)
{
    std::string nested;

    for (auto i = 0; i < 200000; ++i)
        nested += "<a>";

    const auto value = [] (const std::string& text) { return "<PROPERTIES><VALUE name='settings' a='" + text; };
    const auto comment = "<!--" + std::string (8192 - 4 - 1, 'x') + "\xe2\x82\xac--><PROPERTIES/>";

    for (const auto& text :
         { std::string ("<PROPERTIES><?a?>b</PROPERTIES>"), std::string ("\xef\xbb\xbf"), "<PROPERTIES>" + nested,
           nested, value ("\xe9"), value ("1'/></PROPERTIES>\xe9"), value ("&#x"), comment,
           std::string ("<PROPERTIES><VALUE name='settings'><settings>text<a><b/></a></settings></VALUE></PROPERTIES>"),
           std::string ("CPRP\x1f\x8b\x08\x00", 8),
           std::string ("PROP\x01\x00\x00\x00"
                        "a\x00"
                        "b\x00",
                        12),
           "<PROPERTIES>" + std::string (8 * 1024 * 1024, ' ') + "</PROPERTIES>" })
    {
        file().create();
        file().replaceWithData (text.data(), text.size());

        {
            const PluginGlobalSettings settings (product);
            EXPECT_EQ (settings.getValues().getNumProperties(), 0) << text.substr (0, 50);
        }

        EXPECT_EQ (file().getSize(), (juce::int64) text.size());
        PluginGlobalSettings (product).getValues().setProperty ("defaultWidth", "800", nullptr);
        EXPECT_EQ (stored(), "<settings defaultWidth=\"800\"/>") << text.substr (0, 50);
    }
}

TEST_F (PluginGlobalSettingsTest, OtherValuesThatWouldHarmTheReaderAreNotSaved)
{
    write ("<PROPERTIES><VALUE name='x' val='&lt;a&gt;&lt;?b?&gt;c&lt;/a&gt;'/><VALUE name='y' val='1 &lt; 2'/>"
           "<VALUE name='z' val='kept'/></PROPERTIES>");
    PluginGlobalSettings (product).getValues().setProperty ("defaultWidth", "800", nullptr);

    const auto text = file().loadFileAsString();
    EXPECT_FALSE (text.contains ("?b?"));
    EXPECT_TRUE (text.contains ("kept"));
    EXPECT_TRUE (text.contains ("defaultWidth=\"800\""));
}

TEST_F (PluginGlobalSettingsTest, AreNotWaitedForWhereTheFileIsAPipe)
{
    file().getParentDirectory().createDirectory();
    ASSERT_EQ (mkfifo (file().getFullPathName().toRawUTF8(), 0600), 0);

    EXPECT_EQ (PluginGlobalSettings (product).getValues().getNumProperties(), 0);
    PluginGlobalSettings (product).getValues().setProperty ("defaultWidth", "800", nullptr);
    EXPECT_EQ (stored(), "<settings defaultWidth=\"800\"/>");
}

TEST_F (PluginGlobalSettingsTest, AreNotWrittenUnlessTheyChanged)
{
    PluginGlobalSettings (product).getValues().setProperty ("defaultWidth", "800", nullptr);
    const juce::String others =
        "<PROPERTIES><VALUE name='settings'><settings defaultWidth='900'/></VALUE></PROPERTIES>";

    {
        const PluginGlobalSettings idle (product);
        write (others);
    }

    EXPECT_EQ (file().loadFileAsString(), others);

    {
        const PluginGlobalSettings settings (product);
        settings.getValues().setProperty ("defaultWidth", "800", nullptr);
        settings.getValues().setProperty ("defaultWidth", "900", nullptr);
    }

    EXPECT_EQ (file().loadFileAsString(), others);
}

TEST_F (PluginGlobalSettingsTest, AreWrittenEmptyWhereThereIsNoFileYet)
{
    {
        const PluginGlobalSettings settings (product);
    }

    EXPECT_EQ (stored(), "<settings/>");
}

TEST_F (PluginGlobalSettingsTest, TakeTheTreesTypeAsItStands)
{
    write ("<PROPERTIES><VALUE name='settings'><other a='1'/></VALUE></PROPERTIES>");
    const PluginGlobalSettings settings (product);
    EXPECT_TRUE (settings.getValues().hasType ("other"));
    EXPECT_EQ (settings.getValues()["a"].toString(), "1");
}

TEST_F (PluginGlobalSettingsTest, AreLostSilentlyWhereNothingCanBeWritten)
{
    // A file where the folder should be: neither user nor administrator can write there.
    home.getFile ("Test Maker").replaceWithText ("text");
    PluginGlobalSettings (product).getValues().setProperty ("defaultWidth", "800", nullptr);

    EXPECT_EQ (home.getFile ("Test Maker").loadFileAsString(), "text");
    EXPECT_EQ (PluginGlobalSettings (product).getValues().getNumProperties(), 0);
}

TEST_F (PluginGlobalSettingsTest, AFileThatCannotBeReplacedStaysWhole)
{
    PluginGlobalSettings (product).getValues().setProperty ("defaultWidth", "800", nullptr);

    {
        const cv::test::WriteProtection protection (file().getParentDirectory());
        PluginGlobalSettings (product).getValues().setProperty ("defaultWidth", "900", nullptr);
    }

    EXPECT_EQ (stored(), "<settings defaultWidth=\"800\"/>");
}

TEST_F (PluginGlobalSettingsTest, TheLastProcessToCloseWinsWithItsWholeFile)
{
    {
        const PluginGlobalSettings settings (product);
        settings.getValues().setProperty ("defaultWidth", "800", nullptr);
        write ("<PROPERTIES><VALUE name='settings'><settings defaultHeight='600'/></VALUE></PROPERTIES>");
    }

    EXPECT_EQ (stored(), "<settings defaultWidth=\"800\"/>");
}

TEST_F (PluginGlobalSettingsTest, LiveAsLongAsAnyPlugin)
{
    const PresetSandbox sandbox;
    auto first = std::make_unique<TestProduct> (sandbox.getLocations());
    auto second = std::make_unique<TestProduct> (sandbox.getLocations());
    first->getGlobalSettings().getValues().setProperty ("defaultWidth", "800", nullptr);

    first.reset();
    EXPECT_FALSE (file().exists());
    EXPECT_EQ (second->getGlobalSettings().getValues()["defaultWidth"].toString(), "800");
    second.reset();
    EXPECT_EQ (stored(), "<settings defaultWidth=\"800\"/>");
}

TEST_F (PluginGlobalSettingsTest, AreStoredAsNoneOnceTheirTreeIsGone)
{
    PluginGlobalSettings (product).getValues().setProperty ("defaultWidth", "800", nullptr);
    PluginGlobalSettings (product).getValues() = juce::ValueTree();

    const PluginGlobalSettings settings (product);
    EXPECT_TRUE (settings.getValues().hasType ("settings"));
    EXPECT_EQ (settings.getValues().getNumProperties(), 0);
}
} // namespace
} // namespace cv::pluginCore
