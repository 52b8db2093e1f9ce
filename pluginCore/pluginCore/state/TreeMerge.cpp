#include "pluginCore/state/TreeMerge.h"

#include <unordered_map>
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

/** The children of a tree by type, the types in the order of their first children. */
class ChildGroups
{
public:
    explicit ChildGroups (const juce::ValueTree& tree)
    {
        for (const auto& child : tree)
        {
            const auto [index, isNew] = indices.try_emplace (keyOf (child.getType()), groups.size());

            if (isNew)
                groups.push_back ({ child.getType(), {} });

            groups[index->second].children.push_back (child);
        }
    }

    const Trees& operator[] (const juce::Identifier& type) const
    {
        static const Trees none;
        const auto index = indices.find (keyOf (type));
        return index != indices.end() ? groups[index->second].children : none;
    }

    auto begin() const { return groups.begin(); }

    auto end() const { return groups.end(); }

    /** Equal names share their text. */
    static const void* keyOf (const juce::Identifier& type) { return type.getCharPointer().getAddress(); }

private:
    std::vector<ChildrenOfType> groups;
    std::unordered_map<const void*, size_t> indices;
};

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

/** From the last child to the first, so that each is found at once. */
void removeSurplus (const ChildGroups& source, const ChildGroups& present, juce::ValueTree& destination)
{
    std::unordered_map<const void*, size_t> numLeft;

    for (auto i = destination.getNumChildren(); --i >= 0;)
    {
        const auto type = destination.getChild (i).getType();
        const auto key = ChildGroups::keyOf (type);
        auto& count = numLeft.try_emplace (key, present[type].size()).first->second;

        if (count > source[type].size())
        {
            destination.removeChild (i, nullptr);
            --count;
        }
    }
}
} // namespace

void mergeTree (const juce::ValueTree& source, juce::ValueTree destination)
{
    if (! destination.isValid() || source == destination)
        return;

    mergeProperties (source, destination);

    const ChildGroups sourceGroups (source);
    const ChildGroups destinationGroups (destination);
    removeSurplus (sourceGroups, destinationGroups, destination);

    for (const auto& [type, children] : sourceGroups)
    {
        const auto& counterparts = destinationGroups[type];

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
