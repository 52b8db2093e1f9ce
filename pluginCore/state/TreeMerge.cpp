#include "state/TreeMerge.h"

#include <algorithm>
#include <vector>

namespace cv::pluginCore
{
namespace
{
using Trees = std::vector<juce::ValueTree>;

/** The children of a tree that have one type, in their order. */
struct ChildrenOfType
{
    juce::Identifier type;
    Trees children;
};

std::vector<ChildrenOfType> groupByType (const juce::ValueTree& tree)
{
    std::vector<ChildrenOfType> groups;

    for (const auto& child : tree)
    {
        const auto hasSameType = [&] (const auto& group) { return child.hasType (group.type); };
        auto group = std::find_if (groups.begin(), groups.end(), hasSameType);

        if (group == groups.end())
            group = groups.insert (group, { child.getType(), {} });

        group->children.push_back (child);
    }

    return groups;
}

Trees findChildren (const std::vector<ChildrenOfType>& groups, const juce::Identifier& type)
{
    for (const auto& group : groups)
        if (group.type == type)
            return group.children;

    return {};
}

void mergeProperties (const juce::ValueTree& source, juce::ValueTree& destination)
{
    for (auto i = destination.getNumProperties(); --i >= 0;)
        if (const auto name = destination.getPropertyName (i); ! source.hasProperty (name))
            destination.removeProperty (name, nullptr);

    for (auto i = 0; i < source.getNumProperties(); ++i)
    {
        const auto name = source.getPropertyName (i);
        destination.setProperty (name, source[name], nullptr);
    }
}

void removeSurplus (const Trees& children, size_t numToKeep, juce::ValueTree& parent)
{
    for (auto i = children.size(); i > numToKeep; --i)
        parent.removeChild (children[i - 1], nullptr);
}
} // namespace

void mergeTree (const juce::ValueTree& source, juce::ValueTree destination)
{
    if (! destination.isValid() || source == destination)
        return;

    mergeProperties (source, destination);

    const auto sourceGroups = groupByType (source);
    const auto destinationGroups = groupByType (destination);

    for (const auto& [type, children] : destinationGroups)
        removeSurplus (children, findChildren (sourceGroups, type).size(), destination);

    for (const auto& [type, children] : sourceGroups)
    {
        const auto counterparts = findChildren (destinationGroups, type);

        for (size_t i = 0; i < children.size(); ++i)
        {
            if (i < counterparts.size())
                mergeTree (children[i], counterparts[i]);
            else
                destination.appendChild (children[i].createCopy(), nullptr);
        }
    }
}
} // namespace cv::pluginCore
