#pragma once

#include <juce_graphics/juce_graphics.h>

#include <memory>

namespace cv::pluginCore
{
/** The framework's fonts, 14 logical pixels high, from the files that the plug-in carries in itself. Message thread. */
struct CvFonts
{
    CvFonts();

    /** The fonts of this process, shared by all look-and-feels. */
    static std::shared_ptr<CvFonts> getShared();

    juce::Font regular;
    juce::Font semiBold;
    juce::Font bold;
    juce::Font mono;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (CvFonts)
};
} // namespace cv::pluginCore
