#pragma once

#include <juce_core/juce_core.h>

#include <gtest/gtest.h>

namespace cv::test
{
/** Fails the test if what a program has said tells of a failed assertion, a sanitizer's finding or a leak. */
inline void expectNoAlarm (const juce::String& text)
{
    for (const auto* const alarm : { "JUCE Assertion failure", "Sanitizer", "runtime error:", "leaked" })
        EXPECT_FALSE (text.contains (alarm)) << text;
}
} // namespace cv::test
