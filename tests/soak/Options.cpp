#include "soak/Options.h"

#include "render/DisplayConnection.h"
#include "render/NumberText.h"
#include "render/RenderError.h"

namespace cv::soak
{
double parsePositive (const juce::String& option, const juce::String& text)
{
    const auto number = render::parseNumber (text);

    if (! number || *number <= 0.0)
        throw render::UsageError (option + " takes a number above 0, not \"" + text + "\"");

    return *number;
}

juce::int64 parseSeed (const juce::String& text)
{
    const auto number = render::parseInteger (text);

    if (! number)
        throw render::UsageError ("--seed takes a whole number, not \"" + text + "\"");

    return *number;
}

bool hasDisplay()
{
    try
    {
        const render::DisplayConnection connection;
        return true;
    }
    catch (const render::RenderError&)
    {
        return false;
    }
}
} // namespace cv::soak
