#include "pluginCore/state/TreeMerge.h"

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

juce::String textOf (const juce::ValueTree& tree)
{
    return tree.toXmlString (juce::XmlElement::TextFormat().singleLine().withoutHeader());
}

/** Counts the edits of a tree. */
class EditCounter final : public juce::ValueTree::Listener
{
public:
    explicit EditCounter (juce::ValueTree& treeToWatch) : tree (treeToWatch) { tree.addListener (this); }

    ~EditCounter() override { tree.removeListener (this); }

    int edits = 0;

private:
    void valueTreePropertyChanged (juce::ValueTree&, const juce::Identifier&) override { ++edits; }

    void valueTreeChildAdded (juce::ValueTree&, juce::ValueTree&) override { ++edits; }

    void valueTreeChildRemoved (juce::ValueTree&, juce::ValueTree&, int) override { ++edits; }

    void valueTreeChildOrderChanged (juce::ValueTree&, int, int) override { ++edits; }

    void valueTreeRedirected (juce::ValueTree&) override { ++edits; }

    juce::ValueTree& tree;
};

TEST (TreeMerge, TakesPropertiesOver)
{
    auto destination = treeFrom ("<t gone='1' same='2' changed='3'/>");
    EditCounter counter (destination);
    mergeTree (treeFrom ("<t new='5' changed='4' same='2'/>"), destination);

    EXPECT_EQ (textOf (destination), "<t same=\"2\" changed=\"4\" new=\"5\"/>");
    EXPECT_EQ (counter.edits, 3);
}

TEST (TreeMerge, PairsChildrenByTypeAndPosition)
{
    auto destination = treeFrom ("<t><X a='1'/><X a='2'/><X a='3'/></t>");
    const auto first = destination.getChild (0);
    const auto second = destination.getChild (1);
    mergeTree (treeFrom ("<t><Y b='6'/><X a='4'/><X a='5'/></t>"), destination);

    EXPECT_EQ (textOf (destination), "<t><X a=\"4\"/><X a=\"5\"/><Y b=\"6\"/></t>");
    EXPECT_EQ (destination.getChild (0), first);
    EXPECT_EQ (destination.getChild (1), second);
}

TEST (TreeMerge, MergesAtAnyDepthAndAppendsCopies)
{
    const auto source = treeFrom ("<t><X><Z i='1'/><Z i='2'/></X><X j='3'><Z/></X></t>");
    auto destination = treeFrom ("<t><X><Z i='0'/></X></t>");
    mergeTree (source, destination);

    EXPECT_TRUE (destination.isEquivalentTo (source));
    EXPECT_NE (destination.getChild (1), source.getChild (1));
    EXPECT_EQ (source.getChild (1).getParent(), source);
}

TEST (TreeMerge, RemovesTypesThatTheSourceLacks)
{
    auto destination = treeFrom ("<t><X/><Y/><X/></t>");
    mergeTree (treeFrom ("<t><Y/></t>"), destination);
    EXPECT_EQ (textOf (destination), "<t><Y/></t>");
}

TEST (TreeMerge, OfATreeWithItselfOrItsCopyChangesNothing)
{
    auto tree = treeFrom ("<t a='1'><X b='2'/><Y/><X><Z/></X></t>");
    EditCounter counter (tree);

    mergeTree (tree, tree);
    mergeTree (tree.createCopy(), tree);
    EXPECT_EQ (counter.edits, 0);
}

TEST (TreeMerge, InvalidSourceEmptiesTheDestination)
{
    auto destination = treeFrom ("<t a='1' b='2'><X/><Y/></t>");
    mergeTree ({}, destination);
    EXPECT_EQ (textOf (destination), "<t/>");
}

TEST (TreeMerge, InvalidDestinationStaysSo)
{
    juce::ValueTree destination;
    mergeTree (treeFrom ("<t a='1'><X/></t>"), destination);
    EXPECT_FALSE (destination.isValid());
}

/** A tree with so many children, all of one type or each of its own. */
juce::ValueTree makeTree (int numChildren, bool sameType)
{
    juce::ValueTree tree ("t");

    for (auto i = 0; i < numChildren; ++i)
        tree.appendChild (juce::ValueTree (sameType ? juce::String ("x") : "x" + juce::String (i)), nullptr);

    return tree;
}

TEST (TreeMerge, WalksThroughChildrenOnce)
{
    for (const auto sameType : { true, false })
    {
        const auto make = [&] (int numChildren) { return makeTree (numChildren, sameType); };

        const auto fill = [] (auto& tree) { mergeTree (tree, juce::ValueTree ("t")); };
        EXPECT_LT (cv::test::measureGrowth (500, 16, make, fill), 80.0) << sameType;

        const auto empty = [] (auto& tree) { mergeTree (juce::ValueTree ("t"), tree); };
        EXPECT_LT (cv::test::measureGrowth (500, 16, make, empty), 80.0) << sameType;
    }
}

/** Notes the edits of a tree, in order. */
class EditLog final : public juce::ValueTree::Listener
{
public:
    explicit EditLog (juce::ValueTree& treeToWatch) : tree (treeToWatch) { tree.addListener (this); }

    ~EditLog() override { tree.removeListener (this); }

    std::vector<juce::String> edits;

private:
    void valueTreePropertyChanged (juce::ValueTree& changed, const juce::Identifier& name) override
    {
        edits.push_back (changed.getType() + (changed.hasProperty (name) ? " sets " : " drops ") + name);
    }

    void valueTreeChildAdded (juce::ValueTree& parent, juce::ValueTree& child) override
    {
        edits.push_back (parent.getType() + " gets " + child.getType() + child["i"].toString());
    }

    void valueTreeChildRemoved (juce::ValueTree& parent, juce::ValueTree& child, int) override
    {
        edits.push_back (parent.getType() + " loses " + child.getType() + child["i"].toString());
    }

    juce::ValueTree& tree;
};

TEST (TreeMerge, EditsInAFixedOrder)
{
    auto destination = treeFrom ("<t a='1' b='2' c='3'><X i='1'/><Y i='1'/><X i='2'/><X i='3'/></t>");
    const EditLog log (destination);
    mergeTree (treeFrom ("<t n='1' c='4' m='2'><Z i='1'/><X k='5'/><Z i='2'/></t>"), destination);

    EXPECT_THAT (log.edits,
                 testing::ElementsAre ("t drops b", "t drops a", "t sets n", "t sets c", "t sets m", "t loses X3",
                                       "t loses X2", "t loses Y1", "t gets Z1", "t gets Z2", "X drops i", "X sets k"));
}
} // namespace
} // namespace cv::pluginCore
