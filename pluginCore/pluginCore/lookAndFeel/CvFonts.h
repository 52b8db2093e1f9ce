#pragma once

#include <juce_graphics/juce_graphics.h>

#include <memory>

namespace cv::pluginCore
{
/** A font, 14 logical pixels high, of a font file that the plug-in carries in itself. Message thread. */
juce::Font makeEmbeddedFont (const char* fontFile, int sizeBytes);

/** The height at which a text in one line, not squeezed, leaves `extra` of the width free: `height` itself
    where the text fits at that height, else a whole number below it, down to 0. All in logical pixels. Message thread.
*/
float fitFontHeight (const juce::Font&, float width, float height, const juce::String& text, float extra);

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
