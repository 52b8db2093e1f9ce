#include "pluginCore/files/FilePath.h"

namespace cv::pluginCore
{
bool isBelowFolder (const juce::File& file, const juce::File& folder)
{
    if (folder == juce::File())
        return false;

    const auto& path = file.getFullPathName();
    const auto prefix = juce::File::addTrailingSeparator (folder.getFullPathName());
    const auto startsAlike =
        juce::File::areFileNamesCaseSensitive() ? path.startsWith (prefix) : path.startsWithIgnoreCase (prefix);

    return startsAlike && path.length() > prefix.length();
}

bool isRegularFile (const juce::File& file)
{
    std::error_code error;
    return std::filesystem::is_regular_file (toStandardPath (file), error);
}

std::optional<juce::String> toText (const std::filesystem::path& path)
{
#if JUCE_WINDOWS
    return juce::String (path.c_str());
#else
    const juce::CharPointer_UTF8 text (path.c_str());
    const auto fits = juce::CharPointer_UTF8::getBytesRequiredFor (text) >= path.native().size();
    return fits ? std::optional (juce::String (text)) : std::nullopt;
#endif
}

std::filesystem::path toStandardPath (const juce::File& file)
{
    return reinterpret_cast<const char8_t*> (file.getFullPathName().toRawUTF8());
}
} // namespace cv::pluginCore
