#pragma once

#include <juce_core/juce_core.h>

#include <optional>

namespace cv::render
{
/** A number and what follows it, "60 %" for instance. */
struct NumberText
{
    double number = 0.0;

    /** The rest of the text without blanks at its ends; empty when the number stands alone. */
    juce::String unit;

    /** Reads a text that begins with a finite decimal number, with a point whatever the locale. Gives
        nothing for any other text. Any thread.
    */
    static std::optional<NumberText> parse (const juce::String&);
};

/** Reads a text that is a finite decimal number and nothing else. Any thread. */
std::optional<double> parseNumber (const juce::String&);

/** Reads a text that is a whole number in decimal digits and nothing else. Any thread. */
std::optional<int> parseInteger (const juce::String&);

/** The shortest decimal text, without an exponent, that reads back as the same number. Any thread. */
juce::String toPlainText (double);
} // namespace cv::render
