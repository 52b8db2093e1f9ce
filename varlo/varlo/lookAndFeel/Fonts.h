#pragma once

#include <juce_graphics/juce_graphics.h>

#include <memory>

namespace cv::varlo
{
/** The product's fonts, 14 logical pixels high, from the files that the plug-in carries in itself. Message thread. */
struct Fonts
{
    Fonts();

    /** The fonts of this process, shared by all look-and-feels. */
    static std::shared_ptr<Fonts> getShared();

    juce::Font light;
    juce::Font medium;
    juce::Font regular;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (Fonts)
};
} // namespace cv::varlo
