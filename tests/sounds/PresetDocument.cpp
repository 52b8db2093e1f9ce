#include "sounds/PresetDocument.h"

namespace cv::varlo
{
PresetDocument::PresetDocument (const juce::File& file)
{
    lines.addLines (file.loadFileAsString());
}

juce::File PresetDocument::getFile()
{
    return juce::File (VARLO_TEST_FOLDER).getSiblingFile ("docs/presets.md");
}

juce::StringArray PresetDocument::getNames() const
{
    constexpr auto numHeaderRows = 2;
    juce::StringArray names;

    for (auto line = juce::jmax (0, findHeading()); line < lines.size(); ++line)
        if (const auto cells = getCells (line); cells.size() > 1)
            names.add (cells[0]);

    names.removeRange (0, numHeaderRows);
    return names;
}

juce::StringArray PresetDocument::getValues (const juce::String& preset) const
{
    constexpr auto numValues = 6;
    auto cells = getCells (findRow (preset, false));
    cells.removeRange (0, cells.size() - numValues);
    return cells;
}

juce::StringArray PresetDocument::getFigures (const juce::String& preset) const
{
    auto cells = getCells (findRow (preset, true));
    cells.remove (0);
    return cells;
}

bool PresetDocument::setFigures (const juce::String& preset, const juce::StringArray& figures)
{
    const auto line = findRow (preset, true);

    if (line >= 0)
        lines.set (line, "| " + preset + " | " + figures.joinIntoString (" | ") + " |");

    return line >= 0;
}

int PresetDocument::findHeading() const
{
    return lines.indexOf ("## Measured");
}

int PresetDocument::findRow (const juce::String& preset, bool isOfFigures) const
{
    const auto heading = findHeading();
    const auto start = "| " + preset + " |";

    for (auto line = isOfFigures ? heading : 0; line < (isOfFigures ? lines.size() : heading); ++line)
        if (lines[line].startsWith (start))
            return line;

    return -1;
}

juce::StringArray PresetDocument::getCells (int line) const
{
    juce::StringArray cells;

    if (line >= 0)
        cells.addTokens (lines[line].fromFirstOccurrenceOf ("|", false, false).upToLastOccurrenceOf ("|", false, false),
                         "|", {});

    cells.trim();
    return cells;
}
} // namespace cv::varlo
