#include "pluginCore/state/TreeXml.h"

#include "pluginCore/state/XmlText.h"
#include "support/GrowthOfWork.h"

#include <gmock/gmock.h>

namespace cv::pluginCore
{
namespace
{
juce::ValueTree treeFrom (const juce::String& text)
{
    return treeFromXml (*parseXmlText (text));
}

TEST (TreeXml, KeepsElementsAndAttributes)
{
    const auto tree = treeFrom ("<Data a='1'><x b='two'/><x/></Data>");

    EXPECT_TRUE (tree.hasType ("Data"));
    EXPECT_EQ (tree["a"].toString(), "1");
    ASSERT_EQ (tree.getNumChildren(), 2);
    EXPECT_EQ (tree.getChild (0)["b"].toString(), "two");
}

TEST (TreeXml, LeavesOutTextBetweenElements)
{
    const auto tree = treeFrom ("<Data>one<x>two<y/>three</x>four</Data>");

    ASSERT_EQ (tree.getNumChildren(), 1);
    EXPECT_EQ (tree.getChild (0).getNumChildren(), 1);
}

TEST (TreeXml, KeepsBinaryProperties)
{
    const juce::MemoryBlock bytes ("some bytes", 10);
    juce::ValueTree original ("Data");
    original.setProperty ("bytes", juce::var (bytes), nullptr);
    original.setProperty ("none", juce::var (juce::MemoryBlock()), nullptr);

    EXPECT_TRUE (treeFromXml (*original.createXml()).isEquivalentTo (original));
}

TEST (TreeXml, LeavesOutBinaryPropertiesOfAnImpossibleSize)
{
    const auto tree = treeFrom ("<Data base64:a='-5.AAAA' base64:b='2000000000.AAAA' base64:c='99999999999999999999.A'"
                                " base64:d='.AAAA' base64:e='' base64:='1.AA'><x base64:f='100.A'/></Data>");

    EXPECT_EQ (tree.getNumProperties(), 0);
    EXPECT_EQ (tree.getChild (0).getNumProperties(), 0);
}

TEST (TreeXml, KeepsTheOrderOfElementsBetweenTexts)
{
    const auto tree = treeFrom ("<Data>one<x/>two<y/><z/>three<x/></Data>");

    ASSERT_EQ (tree.getNumChildren(), 4);
    EXPECT_TRUE (tree.getChild (0).hasType ("x"));
    EXPECT_TRUE (tree.getChild (1).hasType ("y"));
    EXPECT_TRUE (tree.getChild (2).hasType ("z"));
}

TEST (TreeXml, WalksThroughTextsOnce)
{
    const auto makeXml = [] (int numTexts)
    { return parseXmlText ("<Data>" + juce::String::repeatedString ("<x/>text", numTexts) + "</Data>"); };

    EXPECT_LT (cv::test::measureGrowth (2000, 16, makeXml, [] (const auto& xml) { treeFromXml (*xml); }), 80.0);
}
} // namespace
} // namespace cv::pluginCore
