#include "ParameterTable.h"

#include "ParameterText.h"

#include <array>
#include <numeric>

namespace cv::render
{
juce::String makeParameterTable (const juce::AudioProcessor& plugin)
{
    constexpr size_t numColumns = 3;
    constexpr int gap = 2;

    std::vector<std::array<juce::String, numColumns>> rows { { "Name", "Range", "Default" } };

    for (auto* parameter : plugin.getParameters())
    {
        const ParameterText text (*parameter);
        rows.push_back ({ text.getName(), text.getRange(), text.getDefault() });
    }

    juce::String table;

    for (const auto& row : rows)
    {
        juce::String line;

        for (size_t column = 0; column < numColumns; ++column)
        {
            const auto width = std::accumulate (rows.begin(), rows.end(), 0,
                                                [column] (int widest, const auto& other)
                                                { return juce::jmax (widest, other[column].length()); });
            line << row[column].paddedRight (' ', width + gap);
        }

        table << line.trimEnd() << "\n";
    }

    return table;
}

juce::String makeParameterJson (const juce::AudioProcessor& plugin)
{
    juce::Array<juce::var> list;

    for (auto* parameter : plugin.getParameters())
        list.add (ParameterText (*parameter).describe());

    return juce::JSON::toString (list) + "\n";
}
} // namespace cv::render
