#include "host/LoadedBundle.h"

#include <gtest/gtest.h>
#include <juce_core/juce_core.h>

#include <link.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace cv::varlo
{
namespace
{
constexpr const char* embeddedFiles[] {
    "fonts/Barlow-Bold.ttf",
    "fonts/Barlow-Regular.ttf",
    "fonts/Barlow-SemiBold.ttf",
    "fonts/Hermit-Medium.otf",
    "fonts/NunitoSans_7pt-Light.ttf",
    "fonts/NunitoSans_7pt-Medium.ttf",
    "fonts/NunitoSans_7pt-Regular.ttf",
    "translations/en.txt",
    "translations/es.txt",
    "translations/fr.txt",
    "translations/help_en.txt",
    "translations/help_es.txt",
    "translations/help_fr.txt",
    "translations/help_pt.txt",
    "translations/pt.txt",
};

juce::MemoryBlock readFile (const juce::File& file)
{
    juce::MemoryBlock content;
    EXPECT_TRUE (file.loadFileAsData (content)) << file.getFullPathName();
    return content;
}

/** Copies memory that a program has no business in: what lies between the variables of another library. */
std::string copyMemory (juce::pointer_sized_uint address, size_t numBytes)
{
    std::string copy (numBytes, '\0');
    std::ifstream memory ("/proc/self/mem", std::ios::binary);
    memory.seekg ((std::streamoff) address);
    EXPECT_TRUE (memory.read (copy.data(), (std::streamsize) numBytes));
    return copy;
}

/** What the dynamic linker maps of the bundle's binary for reading only. In the file itself, debug
    information may repeat the data.
*/
std::vector<std::string> findReadOnlyMemory()
{
    const auto collect = [] (dl_phdr_info* library, size_t, void* result)
    {
        if (std::string_view (library->dlpi_name) != VARLO_BUNDLE_BINARY)
            return 0;

        for (auto i = 0; i < library->dlpi_phnum; ++i)
        {
            const auto& segment = library->dlpi_phdr[i];

            if (segment.p_type == PT_LOAD && (segment.p_flags & (PF_R | PF_W)) == PF_R)
                static_cast<std::vector<std::string>*> (result)->push_back (
                    copyMemory (library->dlpi_addr + segment.p_vaddr, segment.p_memsz));
        }

        return 1;
    };

    std::vector<std::string> segments;
    dl_iterate_phdr (collect, &segments);
    return segments;
}

int countOccurrences (const std::vector<std::string>& memory, const juce::MemoryBlock& content)
{
    const std::boyer_moore_horspool_searcher searcher (content.begin(), content.end());
    auto count = 0;

    for (const auto& segment : memory)
        for (auto found = std::search (segment.begin(), segment.end(), searcher); found != segment.end();
             found = std::search (found + 1, segment.end(), searcher))
            ++count;

    return count;
}

TEST (BundleResources, BinaryCarriesEveryFontAndTranslationTableOnce)
{
    const LoadedBundle bundle;
    ASSERT_NE (bundle.getFactory(), nullptr);

    const auto memory = findReadOnlyMemory();
    ASSERT_FALSE (memory.empty());

    for (const auto* const path : embeddedFiles)
    {
        const auto content = readFile (juce::File (VARLO_RESOURCES).getChildFile (path));
        ASSERT_FALSE (content.isEmpty()) << path;
        EXPECT_EQ (countOccurrences (memory, content), 1) << path;
    }
}

TEST (BundleResources, LeaveNoFontOrTranslationTableOut)
{
    juce::StringArray expected;
    juce::StringArray actual;

    for (const auto* const path : embeddedFiles)
        expected.add (path);

    const juce::File resources (VARLO_RESOURCES);

    for (const auto* const wildcard : { "fonts/*.ttf", "fonts/*.otf", "translations/*.txt" })
    {
        const auto folder = resources.getChildFile (juce::String (wildcard).upToFirstOccurrenceOf ("/", false, false));
        const auto pattern = juce::String (wildcard).fromFirstOccurrenceOf ("/", false, false);

        for (const auto& file : folder.findChildFiles (juce::File::findFiles, false, pattern))
            actual.add (file.getRelativePathFrom (resources));
    }

    actual.sort (false);
    EXPECT_EQ (actual, expected);
}
} // namespace
} // namespace cv::varlo
