#include "pluginCore/lookAndFeel/CvFonts.h"

#include "pluginCore/sharing/SharedInstance.h"

#include <PluginCoreResources.h>

namespace cv::pluginCore
{
juce::Font makeEmbeddedFont (const char* fontFile, int sizeBytes)
{
    constexpr auto fontHeight = 14.0f;

    const auto typeface = juce::Typeface::createSystemTypefaceFor (fontFile, (size_t) sizeBytes);
    return juce::FontOptions (typeface).withHeight (fontHeight);
}

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

CvFonts::CvFonts()
    : regular (makeEmbeddedFont (resources::BarlowRegular_ttf, resources::BarlowRegular_ttfSize))
    , semiBold (makeEmbeddedFont (resources::BarlowSemiBold_ttf, resources::BarlowSemiBold_ttfSize))
    , bold (makeEmbeddedFont (resources::BarlowBold_ttf, resources::BarlowBold_ttfSize))
    , mono (makeEmbeddedFont (resources::HermitMedium_otf, resources::HermitMedium_otfSize))
{
}

std::shared_ptr<CvFonts> CvFonts::getShared()
{
    return SharedInstance<CvFonts>::get();
}
} // namespace cv::pluginCore
