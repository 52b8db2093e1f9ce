#pragma once

#include <juce_core/juce_core.h>

namespace cv::soak
{
/** The exit code of a program that has nothing to run on; CTest takes it for a test that is skipped. */
constexpr auto skippedExitCode = 77;

/** What stands behind an option: a number above 0. Throws render::UsageError for anything else. */
double parsePositive (const juce::String& option, const juce::String& text);

/** What stands behind --seed: a whole number. Throws render::UsageError for anything else. */
juce::int64 parseSeed (const juce::String& text);

/** Whether there is an X server to open windows on. To be asked before the first window is made. */
bool hasDisplay();
} // namespace cv::soak
