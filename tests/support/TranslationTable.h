#pragma once

#include <string>
#include <vector>

namespace cv::pluginCore
{
/** One of the translation tables in resources/translations, read without JUCE's parser. */
struct TranslationTable
{
    /** Keys and values as they stand between the outer quotes, escapes included. */
    struct Row
    {
        std::string key;
        std::string value;
    };

    explicit TranslationTable (const std::string& code);

    std::vector<std::string> getKeys() const;

    /** The value of the row with this key, "(no row)" when there is none. */
    std::string getValue (const std::string& key) const;

    std::string text;
    std::vector<Row> rows;

    /** All lines that aren't rows, in their order. */
    std::vector<std::string> otherLines;
};

/** Lines of a text file, without their ends. Fails the test when there is no such file. */
std::vector<std::string> readLines (const std::string& path);

/** A key or value as a program asks for it or shows it. */
std::string unescaped (std::string);
} // namespace cv::pluginCore
