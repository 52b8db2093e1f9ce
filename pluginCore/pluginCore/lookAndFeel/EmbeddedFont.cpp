#include "pluginCore/lookAndFeel/EmbeddedFont.h"

namespace cv::pluginCore
{
juce::Font makeEmbeddedFont (const char* fontFile, int sizeBytes)
{
    constexpr auto fontHeight = 14.0f;

    const auto typeface = juce::Typeface::createSystemTypefaceFor (fontFile, (size_t) sizeBytes);
    return juce::FontOptions (typeface).withHeight (fontHeight);
}
} // namespace cv::pluginCore
