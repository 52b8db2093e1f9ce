#include "NumberText.h"

#include <array>
#include <charconv>
#include <cmath>

namespace cv::render
{
namespace
{
/** from_chars takes no plus sign; "+-5" stays as it is and fails. */
std::string withoutPlusSign (const juce::String& text)
{
    const auto trimmed = text.trim();
    const auto hasPlus = trimmed.startsWithChar ('+') && ! trimmed.startsWith ("+-");

    return (hasPlus ? trimmed.substring (1) : trimmed).toStdString();
}
} // namespace

std::optional<NumberText> NumberText::parse (const juce::String& text)
{
    const auto characters = withoutPlusSign (text);
    const auto* const end = characters.data() + characters.size();

    NumberText result;
    const auto [rest, error] = std::from_chars (characters.data(), end, result.number);

    if (error != std::errc() || ! std::isfinite (result.number))
        return {};

    result.unit = juce::String::fromUTF8 (rest, (int) (end - rest)).trim();
    return result;
}

std::optional<double> parseNumber (const juce::String& text)
{
    const auto parsed = NumberText::parse (text);

    if (! parsed || parsed->unit.isNotEmpty())
        return {};

    return parsed->number;
}

std::optional<int> parseInteger (const juce::String& text)
{
    const auto characters = withoutPlusSign (text);
    const auto* const end = characters.data() + characters.size();

    int result = 0;
    const auto [rest, error] = std::from_chars (characters.data(), end, result);

    if (error != std::errc() || rest != end)
        return {};

    return result;
}

juce::String toPlainText (double number)
{
    // The longest one, -DBL_MAX or the smallest denormal, has well under 1100 digits.
    std::array<char, 1100> characters {};
    const auto result =
        std::to_chars (characters.data(), characters.data() + characters.size(), number, std::chars_format::fixed);

    return juce::String (characters.data(), (size_t) (result.ptr - characters.data()));
}
} // namespace cv::render
