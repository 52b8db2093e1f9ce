#include "pluginCore/lookAndFeel/FontFitting.h"

namespace cv::pluginCore
{
float fitFontHeight (const juce::Font& font, float width, float height, const juce::String& text, float extra)
{
    const auto fullSizeFont = font.withHeight (height).withHorizontalScale (1.0f);
    const auto textWidth = std::ceil (juce::GlyphArrangement::getStringWidth (fullSizeFont, text));

    if (textWidth + extra <= width)
        return height;

    // A text without a width fits at any height, and there is nothing to divide by.
    if (textWidth <= 0.0f)
        return height;

    return std::trunc (juce::jmax (width - extra, 0.0f) / textWidth * height);
}
} // namespace cv::pluginCore
