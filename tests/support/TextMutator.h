#pragma once

#include <juce_core/juce_core.h>

#include <string>

namespace cv::test
{
/** Damages XML the way disks, editors and strangers do, the same for the same seed. */
class TextMutator
{
public:
    explicit TextMutator (juce::int64 seed) : random (seed) {}

    /** The text after one to three random damages. */
    std::string mutate (std::string text);

private:
    std::string damage (std::string);
    std::string flipBits (std::string);
    std::string truncate (std::string);
    std::string duplicateElement (std::string);
    std::string swapElements (std::string);
    std::string changeNumber (std::string);
    std::string nestDeeply (std::string);
    std::string changeEncoding (const std::string&);
    std::string insertOddBytes (std::string);

    /** The bounds of a random tag, "<" to ">"; both at the end where there is none. */
    std::pair<size_t, size_t> findTag (const std::string&);

    size_t positionIn (const std::string&);

    juce::Random random;
};
} // namespace cv::test
