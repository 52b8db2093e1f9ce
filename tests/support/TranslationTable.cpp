#include "support/TranslationTable.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

namespace cv::pluginCore
{
namespace
{
constexpr const char* separator = "\" = \"";

std::string readText (const std::string& path)
{
    std::ifstream file (path, std::ios::binary);
    EXPECT_TRUE (file.is_open()) << path;
    return { std::istreambuf_iterator<char> (file), {} };
}

std::vector<std::string> splitIntoLines (const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream (text);

    for (std::string line; std::getline (stream, line);)
        lines.push_back (line);

    return lines;
}

void replaceAll (std::string& text, const std::string& pattern, const std::string& replacement)
{
    for (auto at = text.find (pattern); at != std::string::npos; at = text.find (pattern, at + replacement.size()))
        text.replace (at, pattern.size(), replacement);
}
} // namespace

TranslationTable::TranslationTable (const std::string& code)
    : text (readText (VARLO_RESOURCES "/translations/" + code + ".txt"))
{
    for (const auto& line : splitIntoLines (text))
    {
        const auto middle = line.find (separator);

        if (middle == std::string::npos || line.front() != '"' || line.back() != '"')
        {
            otherLines.push_back (line);
            continue;
        }

        const auto valueStart = middle + std::string (separator).size();
        rows.push_back ({ line.substr (1, middle - 1), line.substr (valueStart, line.size() - valueStart - 1) });
    }
}

std::vector<std::string> TranslationTable::getKeys() const
{
    std::vector<std::string> keys;

    for (const auto& row : rows)
        keys.push_back (row.key);

    return keys;
}

std::string TranslationTable::getValue (const std::string& key) const
{
    const auto row = std::find_if (rows.begin(), rows.end(), [&] (const auto& other) { return other.key == key; });
    return row != rows.end() ? row->value : "(no row)";
}

std::vector<std::string> readLines (const std::string& path)
{
    return splitIntoLines (readText (path));
}

std::string unescaped (std::string text)
{
    replaceAll (text, "\\\"", "\"");
    replaceAll (text, "\\'", "'");
    replaceAll (text, "\\n", "\n");
    return text;
}
} // namespace cv::pluginCore
