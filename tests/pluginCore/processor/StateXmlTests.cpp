#include "pluginCore/state/XmlText.h"
#include "support/PresetListenerLog.h"
#include "support/PresetSandbox.h"
#include "support/TestProduct.h"

#include <gmock/gmock.h>

namespace cv::pluginCore
{
namespace
{
using cv::test::PresetSandbox;
using cv::test::TestProduct;

juce::String textOf (const juce::XmlElement& xml)
{
    return xml.toString (juce::XmlElement::TextFormat().singleLine().withoutHeader());
}

class StateXmlTest : public testing::Test
{
protected:
    StateXmlTest() { product.initialise(); }

    juce::String presetXml() { return textOf (*product.createStateXml (false)); }

    juce::String projectXml() { return textOf (*product.createStateXml (true)); }

    void restore (const juce::String& text, bool includeEditorState = false)
    {
        product.restoreStateXml (*parseXmlText (text), includeEditorState);
    }

    /** Locks parameters the way a project does. */
    void lock (const juce::String& ids)
    {
        auto xml = product.createStateXml (true);
        xml->setAttribute ("lockedParams", ids);
        juce::MemoryBlock chunk;
        juce::AudioProcessor::copyXmlToBinary (*xml, chunk);
        product.setStateInformation (chunk.getData(), (int) chunk.getSize());
    }

    int resetsTaken()
    {
        product.numResets = 0;
        product.processOneBlock();
        product.processOneBlock();
        return product.numResets;
    }

    const PresetSandbox sandbox;
    TestProduct product { sandbox.getLocations() };
};

TEST_F (StateXmlTest, PresetHoldsVersionAndParameters)
{
    product.set ("level", 12.5f);
    EXPECT_EQ (presetXml(), "<TestProduct version=\"2.3.4\"><PARAMS><PARAM id=\"level\" value=\"12.5\"/>"
                            "<PARAM id=\"time\" value=\"100.0\"/></PARAMS></TestProduct>");
}

TEST_F (StateXmlTest, PresetFileIsUtf8WithCarriageReturns)
{
    const auto file = sandbox.getFile ("a.test");
    product.getPresetsManager().savePreset (file, false);

    EXPECT_EQ (file.loadFileAsString(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n\r\n"
                                        "<TestProduct version=\"2.3.4\">\r\n  <PARAMS>\r\n"
                                        "    <PARAM id=\"level\" value=\"50.0\"/>\r\n"
                                        "    <PARAM id=\"time\" value=\"100.0\"/>\r\n"
                                        "  </PARAMS>\r\n</TestProduct>\r\n");
}

TEST_F (StateXmlTest, VersionMarksABeta)
{
    product.beta = true;
    product.betaNumber = 4;
    EXPECT_TRUE (presetXml().startsWith ("<TestProduct version=\"2.3.4 beta 4\">"));
    EXPECT_EQ (textOf (*product.createIdentityXml()), "<TestProduct company=\"Test Maker\" version=\"2.3.4 beta 4\"/>");
}

TEST_F (StateXmlTest, PresetLeavesOutWhatOnlyAProjectNeeds)
{
    product.setEditorSize (400, 300);
    product.settingsTree.setProperty ("s", 1, nullptr);
    product.dataTree.appendChild (juce::ValueTree ("d"), nullptr);
    lock ("level");

    for (const auto* word : { "pluginEditor", "Settings", "lockedParams", "lastPreset" })
        EXPECT_FALSE (presetXml().contains (word)) << word;

    EXPECT_TRUE (presetXml().endsWith ("</PARAMS><Data><d/></Data></TestProduct>"));
}

TEST_F (StateXmlTest, ProjectHoldsSizeAndSettingsBeforeData)
{
    EXPECT_TRUE (projectXml().startsWith ("<TestProduct version=\"2.3.4\"><PARAMS>"));
    EXPECT_TRUE (projectXml().endsWith ("</PARAMS><Settings/></TestProduct>"));

    product.setEditorSize (400, 0);
    product.dataTree.setProperty ("d", "x", nullptr);
    EXPECT_TRUE (projectXml().startsWith ("<TestProduct version=\"2.3.4\" pluginEditorWidth=\"400\"><PARAMS>"));
    EXPECT_TRUE (projectXml().endsWith ("</PARAMS><Settings/><Data d=\"x\"/></TestProduct>"));

    product.setEditorSize (400, 300);
    EXPECT_TRUE (projectXml().startsWith (
        "<TestProduct version=\"2.3.4\" pluginEditorWidth=\"400\" pluginEditorHeight=\"300\"><PARAMS>"));
}

TEST_F (StateXmlTest, HooksFillTheTreesLast)
{
    juce::String order;
    const TestProduct another (
        sandbox.getLocations(),
        [&] (juce::ValueTree& tree)
        {
            order << tree.getType().toString() << ' ';
            tree.setProperty ("a", 1, nullptr);
        },
        [&] (juce::ValueTree& tree) { order << tree.getType().toString(); });

    EXPECT_EQ (order, "Data Settings");
    EXPECT_EQ ((int) another.dataTree["a"], 1);
}

TEST_F (StateXmlTest, RoundTripBringsEverythingBack)
{
    product.set ("level", 12.5f);
    product.set ("time", 333.25f);
    product.setEditorSize (400, 300);
    product.dataTree.setProperty ("d", "x", nullptr);
    product.settingsTree.setProperty ("s", "y", nullptr);
    const auto saved = product.createStateXml (true);

    TestProduct another (sandbox.getLocations());
    another.restoreStateXml (*saved, true);
    EXPECT_EQ (another.get ("level"), 12.5f);
    EXPECT_EQ (another.get ("time"), 333.25f);
    EXPECT_EQ (another.getEditorWidth(), 400);
    EXPECT_EQ (another.getEditorHeight(), 300);
    EXPECT_EQ (another.dataTree["d"].toString(), "x");
    EXPECT_EQ (another.settingsTree["s"].toString(), "y");
}

TEST_F (StateXmlTest, AnotherTagDoesNothingAtAll)
{
    for (const auto* text : { "<testproduct/>", "<Other><PARAMS><PARAM id='level' value='1'/></PARAMS></Other>" })
        restore (text, true);

    EXPECT_EQ (product.get ("level"), 50.0f);
    EXPECT_EQ (resetsTaken(), 0);
}

TEST_F (StateXmlTest, EmptyStateChangesNothingButResetsOnce)
{
    product.set ("level", 10.0f);
    product.dataTree.setProperty ("d", 1, nullptr);
    const auto before = presetXml();
    restore ("<TestProduct/>");

    EXPECT_EQ (presetXml(), before);
    EXPECT_EQ (resetsTaken(), 1);
}

TEST_F (StateXmlTest, ManyRestoresBetweenTwoBlocksResetOnce)
{
    for (auto i = 0; i < 5; ++i)
        restore ("<TestProduct/>");

    EXPECT_EQ (resetsTaken(), 1);
    EXPECT_EQ (resetsTaken(), 0);
}

TEST_F (StateXmlTest, WithoutParametersUndoHistoryAndLocksStay)
{
    product.getUndoManager().beginNewTransaction();
    product.set ("level", 10.0f);
    product.getValueTreeState().copyState();
    restore ("<TestProduct><params><PARAM id='level' value='1'/></params><Data d='1'/></TestProduct>");

    EXPECT_EQ (product.get ("level"), 10.0f);
    EXPECT_TRUE (product.getUndoManager().canUndo());
    EXPECT_EQ (product.dataTree["d"].toString(), "1");
}

TEST_F (StateXmlTest, MissingParameterTakesItsDefaultAndIsSavedWithIt)
{
    product.set ("level", 10.0f);
    product.set ("time", 20.0f);
    restore ("<TestProduct><PARAMS><PARAM id='time' value='30'/></PARAMS></TestProduct>");
    EXPECT_EQ (product.get ("level"), 50.0f);
    EXPECT_EQ (product.get ("time"), 30.0f);

    restore ("<TestProduct><PARAMS/></TestProduct>");
    restore ("<TestProduct><PARAMS><PARAM id='time'/></PARAMS></TestProduct>");
    EXPECT_EQ (product.get ("time"), 100.0f);
    EXPECT_THAT (presetXml().toStdString(), testing::HasSubstr ("<PARAM id=\"level\" value=\"50.0\"/>"));
    EXPECT_THAT (presetXml().toStdString(), testing::HasSubstr ("<PARAM id=\"time\" value=\"100.0\"/>"));
}

TEST_F (StateXmlTest, UnknownThingsAreIgnored)
{
    restore ("<TestProduct version='99' extra='1'><More/><PARAMS><PARAM id='other' value='1'/><PARAM value='2'/>"
             "<PARAM id='level' value='10'/></PARAMS></TestProduct>");

    EXPECT_EQ (product.get ("level"), 10.0f);
    EXPECT_FALSE (presetXml().contains ("More"));
    EXPECT_FALSE (presetXml().contains ("extra"));
}

TEST_F (StateXmlTest, UnknownThingsAmongTheParametersAreKeptUntilTheNextLoad)
{
    restore ("<TestProduct><PARAMS a='1'><PARAM id='other' value='2' b='3'/><c><d/></c></PARAMS></TestProduct>");

    EXPECT_TRUE (presetXml().contains ("<PARAMS a=\"1\"><PARAM id=\"other\" value=\"2\" b=\"3\"/><c><d/></c>"))
        << presetXml();

    restore ("<TestProduct><PARAMS/></TestProduct>");
    EXPECT_FALSE (presetXml().contains ("other"));
}

TEST_F (StateXmlTest, ValuesStayWithinTheirRange)
{
    const auto levelFrom = [this] (const juce::String& value)
    {
        product.set ("level", 10.0f);
        restore ("<TestProduct><PARAMS><PARAM id='level' value='" + value + "'/></PARAMS></TestProduct>");
        return product.get ("level");
    };

    EXPECT_EQ (levelFrom ("100.5"), 100.0f);
    EXPECT_EQ (levelFrom ("-1"), 0.0f);
    EXPECT_EQ (levelFrom ("1e300"), 100.0f);
    EXPECT_EQ (levelFrom ("-1e999"), 0.0f);
    EXPECT_EQ (levelFrom ("inf"), 100.0f);
    EXPECT_EQ (levelFrom ("nan"), 50.0f);
    EXPECT_EQ (levelFrom ("text"), 50.0f);
    EXPECT_EQ (levelFrom ("12.5 %"), 12.5f);
}

TEST_F (StateXmlTest, ValuesThatAreNoNumbersTakeTheDefault)
{
    for (const auto* value : { "", " ", "text", "nan", "-nan", "NaN(1)", "-", "+", ".", "-.", "e5", "--5", "0x", "&#9;",
                               "1e2147483648", "5e-4294967297", "2E+03919604157 ms" })
    {
        product.set ("time", 10.0f);
        restore ("<TestProduct><PARAMS><PARAM id='time' value='" + juce::String (value) + "'/></PARAMS></TestProduct>");
        const auto expected = juce::String (value).startsWithChar ('0') ? 1.0f : 100.0f;
        EXPECT_EQ (product.get ("time"), expected) << value;
        EXPECT_EQ (presetXml(), "<TestProduct version=\"2.3.4\"><PARAMS><PARAM id=\"time\" value=\""
                                    + juce::String (expected, 1)
                                    + "\"/><PARAM id=\"level\" value=\"50.0\"/></PARAMS></TestProduct>");
    }
}

TEST_F (StateXmlTest, GoodValuesAreSavedAsTheyWereWritten)
{
    for (const auto* value : { "120", "120.0", " 120", "1.2e2", "000120", "+120.", "1.2E+00000000000002" })
    {
        const auto parameters = "<PARAMS><PARAM id=\"level\" value=\"7\" note=\"x\"/><PARAM id=\"time\" value=\""
                                + juce::String (value) + "\"/><PARAM id=\"other\" value=\"text\"/></PARAMS>";
        restore ("<TestProduct>" + parameters + "</TestProduct>");
        EXPECT_EQ (product.get ("time"), 120.0f) << value;
        EXPECT_TRUE (presetXml().contains (parameters)) << presetXml();
    }
}

TEST_F (StateXmlTest, BadValuesAreNotSavedAgain)
{
    struct Case
    {
        const char* stored;
        const char* saved;
    };

    // The default too: a parameter that doesn't move writes nothing to the tree.
    for (const auto& [stored, saved] :
         { Case { "<PARAM id='time' value='0.0'/>", "1.0" }, Case { "<PARAM id='time' value='1e300'/>", "1000.0" },
           Case { "<PARAM id='time' value='1000.0000001'/>", "1000.0" }, Case { "<PARAM id='time'/>", "100.0" },
           Case { "<PARAM id='time' value='20 ms'/>", "20.0" },
           Case { "<PARAM id='time' base64:value='3.AAAA'/>", "100.0" },
           Case { "<PARAM id='time' value='nan' value='0'/>", "100.0" },
           Case { "<PARAM id='time' value='30' value='0'/>", "30.0" },
           Case { "<PARAM id='time' value='30'/><PARAM id='time'/>", "100.0" },
           Case { "<PARAM id='time' value='30'/><PARAM id='time' value='40.0'/>", "40.0" },
           Case { "<PARAM id='time' value='text'/><PARAM id='time' value='40.0'/>", "40.0" },
           Case { "<param id='time' value='30'/>", "30.0" } })
        for (const auto before : { 100.0f, 500.0f })
        {
            restore ("<TestProduct><PARAMS/></TestProduct>");
            product.set ("time", before);
            restore ("<TestProduct><PARAMS><PARAM id='level' value='50.0'/>" + juce::String (stored)
                     + "</PARAMS></TestProduct>");

            EXPECT_NEAR (product.get ("time"), juce::String (saved).getFloatValue(), 1.0e-4f) << stored;
            EXPECT_EQ (presetXml(), "<TestProduct version=\"2.3.4\"><PARAMS><PARAM id=\"level\" value=\"50.0\"/>"
                                    "<PARAM id=\"time\" value=\""
                                        + juce::String (saved) + "\"/></PARAMS></TestProduct>")
                << stored;
        }
}

TEST_F (StateXmlTest, ManyParametersAreReadInOneWalk)
{
    juce::MemoryOutputStream text;
    text << "<TestProduct><PARAMS>";

    for (auto i = 0; i < 30000; ++i)
        text << "<PARAM id='level' value='" << i % 100 << "'/><PARAM id='x" << i << "'/>";

    text << "</PARAMS></TestProduct>";
    restore (text.toUTF8());
    EXPECT_EQ (product.get ("level"), 99.0f);
    EXPECT_EQ (product.getValueTreeState().copyState().getNumChildren(), 30002);
}

TEST_F (StateXmlTest, LoadLeavesEditorSizeAndSettingsAlone)
{
    product.setEditorSize (400, 300);
    product.settingsTree.setProperty ("s", "old", nullptr);
    restore ("<TestProduct pluginEditorWidth='1' pluginEditorHeight='2'><Settings s='new'/></TestProduct>", false);

    EXPECT_EQ (product.getEditorWidth(), 400);
    EXPECT_EQ (product.getEditorHeight(), 300);
    EXPECT_EQ (product.settingsTree["s"].toString(), "old");
}

TEST_F (StateXmlTest, ProjectWithoutASizeForgetsIt)
{
    product.setEditorSize (400, 300);
    restore ("<TestProduct pluginEditorHeight='500'/>", true);

    EXPECT_EQ (product.getEditorWidth(), -1);
    EXPECT_EQ (product.getEditorHeight(), 500);
}

TEST_F (StateXmlTest, HooksMayChangeWhatIsMerged)
{
    product.dataTree.setProperty ("old", 1, nullptr);
    const auto dataTree = product.dataTree;
    restore ("<TestProduct><Data convert='1'/><Settings convert='2'/></TestProduct>", true);

    EXPECT_EQ (product.restoredTrees.joinIntoString (" "), "<Data convert=\"1\"/> <Settings convert=\"2\"/>");
    EXPECT_EQ (dataTree.toXmlString (juce::XmlElement::TextFormat().singleLine().withoutHeader()),
               "<Data convert=\"1\" converted=\"1\"/>");
    EXPECT_EQ ((int) product.settingsTree["converted"], 1);

    restore ("<TestProduct><Settings/></TestProduct>", false);
    EXPECT_EQ (product.restoredTrees.size(), 2);
    EXPECT_EQ (product.dataTree["convert"].toString(), "1");
}

TEST_F (StateXmlTest, ElementNameLeavesOutWhatXmlCannotHold)
{
    const auto elementName = [this] (const juce::String& name)
    { return TestProduct (sandbox.getLocations(), {}, {}, name).createStateXml (false)->getTagName(); };

    EXPECT_EQ (elementName ("A b_C-d"), "AbCd");
    EXPECT_EQ (elementName ("Plain"), "Plain");
}
} // namespace
} // namespace cv::pluginCore
