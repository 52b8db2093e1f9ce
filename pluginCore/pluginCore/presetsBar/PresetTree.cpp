#include "pluginCore/presetsBar/PresetTree.h"

#include "pluginCore/files/FilePath.h"
#include "pluginCore/presets/PresetFile.h"

#include <algorithm>
#include <unordered_set>

namespace cv::pluginCore
{
namespace
{
namespace fs = std::filesystem;

/** File::getChildFile() for a single name, whatever it holds. */
juce::File getChild (const juce::File& folder, const juce::String& name)
{
    return juce::File::createFileWithoutCheckingPath (juce::File::addTrailingSeparator (folder.getFullPathName())
                                                      + name);
}

/** Orders as JUCE's own lists of files do; names that count as equal there keep one order all the same. */
bool isBefore (const juce::File& a, const juce::File& b)
{
    const auto order = juce::File::NaturalFileComparator (false).compareElements (a, b);
    return order < 0 || (order == 0 && a.getFullPathName() < b.getFullPathName());
}

/** Reads folders into a flat list, in which each stands behind the one that it lies in. */
class FolderReader
{
public:
    FolderReader (const IsPreset& predicate, int maxEntries) : isPreset (predicate), numEntriesLeft (maxEntries) {}

    PresetTree read (const juce::File& root)
    {
        addFolder (root, toStandardPath (root), 0, 0);

        if (folders.empty())
            return {};

        readUnreadFolders();

        while (! links.empty())
            followLinks();

        for (auto i = folders.size(); --i > 0;)
            if (folders[i].tree.holdsPresets)
                folders[folders[i].parent].tree.holdsPresets = true;

        // The last ones first: a folder is complete when it moves to where it lies.
        for (auto i = folders.size(); --i > 0;)
            finish (folders[i], &folders[folders[i].parent]);

        finish (folders.front(), nullptr);
        return std::move (folders.front().tree);
    }

private:
    struct Folder
    {
        PresetTree tree;
        fs::path realPath;
        int depth;
        size_t parent;
    };

    struct Link
    {
        juce::File file;
        size_t parent;
    };

    /** Does nothing for what is no folder, lies too deep or is known already. */
    void addFolder (const juce::File& file, const fs::path& path, int depth, size_t parent)
    {
        std::error_code error;
        auto realPath = fs::canonical (path, error);

        if (! error && fs::is_directory (realPath, error))
            addRealFolder (file, std::move (realPath), depth, parent);
    }

    void addRealFolder (const juce::File& file, fs::path realPath, int depth, size_t parent)
    {
        if (depth <= maxPresetFolderDepth && knownPaths.insert (realPath.native()).second)
            folders.push_back ({ { file }, std::move (realPath), depth, parent });
    }

    void readUnreadFolders()
    {
        for (; numRead < folders.size(); ++numRead)
            readFolder (numRead);
    }

    void readFolder (size_t index)
    {
        std::error_code error;
        fs::directory_iterator entry (folders[index].realPath, error);

        for (; ! error && entry != fs::directory_iterator() && numEntriesLeft > 0; entry.increment (error))
        {
            --numEntriesLeft;
            readEntry (*entry, index);
        }
    }

    void readEntry (const fs::directory_entry& entry, size_t index)
    {
        const auto name = toText (entry.path().filename());

        if (! name)
            return;

        std::error_code error;
        const auto file = getChild (folders[index].tree.file, *name);
        const auto isFolder = entry.is_directory (error);
        const auto matches = isPreset (file, isFolder);
        folders[index].tree.holdsPresets |= matches;

        if (isFolder && entry.is_symlink (error))
            links.push_back ({ file, index });
        else if (isFolder)
            addRealFolder (file, entry.path(), folders[index].depth + 1, index);
        else if (matches && ! file.isHidden())
            folders[index].tree.children.push_back ({ file, false });
    }

    /** Follows the links found so far, in an order that doesn't depend on the disk's. */
    void followLinks()
    {
        auto found = std::exchange (links, {});
        std::stable_sort (found.begin(), found.end(),
                          [] (const Link& a, const Link& b) { return isBefore (a.file, b.file); });

        for (const auto& link : found)
        {
            addFolder (link.file, toStandardPath (link.file), folders[link.parent].depth + 1, link.parent);
            readUnreadFolders();
        }
    }

    static void finish (Folder& folder, Folder* parent)
    {
        auto& children = folder.tree.children;
        std::stable_sort (children.begin(), children.end(),
                          [] (const PresetTree& a, const PresetTree& b) { return isBefore (a.file, b.file); });

        if (parent != nullptr && folder.tree.holdsPresets && ! folder.tree.file.isHidden())
            parent->tree.children.push_back (std::move (folder.tree));
    }

    const IsPreset& isPreset;
    std::vector<Folder> folders;
    std::vector<Link> links;
    std::unordered_set<fs::path::string_type> knownPaths;
    size_t numRead = 0;
    int numEntriesLeft;
};
} // namespace

PresetTree readPresetTree (const juce::File& folder, const IsPreset& isPreset, int maxEntries)
{
    return FolderReader (isPreset, maxEntries).read (folder);
}

PresetTree readBank (const juce::File& folder, const juce::String& extension)
{
    return readPresetTree (folder, [&extension] (const juce::File& file, bool isFolder)
                           { return file.hasFileExtension (extension) && (isFolder || isPresetFile (file)); });
}

bool folderHoldsPresets (const juce::File& folder, const juce::String& wildcard)
{
    if (wildcard == "*")
        return readPresetTree (folder, [] (const juce::File&, bool isFolder) { return ! isFolder; }).holdsPresets;

    return readBank (folder, wildcard.trimCharactersAtStart ("*")).holdsPresets;
}

bool isVisiblePreset (const juce::File& file, const juce::String& extension)
{
    return file.hasFileExtension (extension) && ! file.isHidden() && isPresetFile (file);
}
} // namespace cv::pluginCore
