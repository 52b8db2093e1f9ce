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

std::filesystem::path toStandardPath (const juce::File& file)
{
    return reinterpret_cast<const char8_t*> (file.getFullPathName().toRawUTF8());
}
} // namespace cv::pluginCore
