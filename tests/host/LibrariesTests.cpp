#include <gmock/gmock.h>
#include <juce_core/juce_core.h>

#include <elf.h>
#include <link.h>
#include <regex>

namespace cv::varlo
{
namespace
{
using Strings = std::vector<std::string>;

/** A built program or library, read as a file. */
class Binary
{
public:
    explicit Binary (const char* path) { juce::File (path).loadFileAsData (data); }

    /** The libraries that it names as its needs. */
    Strings getNeeded() const { return getNames (DT_NEEDED); }

    /** The folders of the machine that built it, if it would search them for libraries. */
    Strings getSearchPaths() const
    {
        auto paths = getNames (DT_RUNPATH);

        for (const auto& path : getNames (DT_RPATH))
            paths.push_back (path);

        return paths;
    }

private:
    template <typename Type>
    const Type* at (size_t offset) const
    {
        return reinterpret_cast<const Type*> (static_cast<const char*> (data.getData()) + offset);
    }

    Strings getNames (ElfW (Sxword) tag) const
    {
        Strings names;

        if (data.getSize() < sizeof (ElfW (Ehdr)))
            return names;

        const auto& header = *at<ElfW (Ehdr)> (0);
        const auto* const sections = at<ElfW (Shdr)> (header.e_shoff);

        for (auto i = 0; i < header.e_shnum; ++i)
        {
            const auto& section = sections[i];

            if (section.sh_type != SHT_DYNAMIC)
                continue;

            const auto* const texts = at<char> (sections[section.sh_link].sh_offset);

            for (const auto* entry = at<ElfW (Dyn)> (section.sh_offset); entry->d_tag != DT_NULL; ++entry)
                if (entry->d_tag == tag)
                    names.emplace_back (texts + entry->d_un.d_val);
        }

        return names;
    }

    juce::MemoryBlock data;
};

/** What every distribution of these years has under the same name: the C and C++ runtimes, the fonts' two, zlib. */
Strings everywhere()
{
    return {
        "libc.so.6",      "libfontconfig.so.1", "libfreetype.so.6",     "libgcc_s.so.1",         "libm.so.6",
        "libstdc++.so.6", "libz.so.1",          "ld-linux-x86-64.so.2", "ld-linux-aarch64.so.1", "ld-linux-armhf.so.3"
    };
}

/** The sanitizers' builds, which also need those, stay on their machine. */
void expectNeedsOnly (const Binary& binary, const Strings& allowed)
{
    const auto needed = binary.getNeeded();
    EXPECT_THAT (needed, testing::Contains ("libc.so.6"));

    for (const auto& name : needed)
    {
        const auto isSanitizer = std::regex_match (name, std::regex ("lib(a|t|ub)san\\..*"));
        EXPECT_TRUE (isSanitizer || std::find (allowed.begin(), allowed.end(), name) != allowed.end()) << name;
    }

    EXPECT_THAT (binary.getSearchPaths(), testing::IsEmpty());
}

Strings everywhereAnd (const Strings& more)
{
    auto allowed = everywhere();
    allowed.insert (allowed.end(), more.begin(), more.end());
    return allowed;
}

TEST (Libraries, TheBundlesNeedWhatEveryDistributionHas)
{
    for (const auto* path : { VARLO_BUNDLE_BINARY, VARLO_LV2_BINARY })
    {
        SCOPED_TRACE (path);
        expectNeedsOnly (Binary (path), everywhere());
    }
}

TEST (Libraries, TheProgramsNeedSoundOrConversionAndTheDisplayBesides)
{
    expectNeedsOnly (Binary (VARLO_STANDALONE), everywhereAnd ({ "libasound.so.2" }));
    expectNeedsOnly (Binary (VARLO_RENDER), everywhereAnd ({ "libX11.so.6", "libsamplerate.so.0" }));
}
} // namespace
} // namespace cv::varlo
