#include "lookAndFeel/CvFonts.h"

#include "sharing/SharedInstance.h"

#include <PluginCoreResources.h>

namespace cv::pluginCore
{
namespace
{
constexpr auto fontHeight = 14.0f;

juce::Font makeFont (const char* fontFile, int sizeBytes)
{
    const auto typeface = juce::Typeface::createSystemTypefaceFor (fontFile, static_cast<size_t> (sizeBytes));
    return juce::FontOptions (typeface).withHeight (fontHeight);
}
} // namespace

CvFonts::CvFonts()
    : regular (makeFont (resources::BarlowRegular_ttf, resources::BarlowRegular_ttfSize))
    , semiBold (makeFont (resources::BarlowSemiBold_ttf, resources::BarlowSemiBold_ttfSize))
    , bold (makeFont (resources::BarlowBold_ttf, resources::BarlowBold_ttfSize))
    , mono (makeFont (resources::HermitMedium_otf, resources::HermitMedium_otfSize))
{
}

std::shared_ptr<CvFonts> CvFonts::getShared()
{
    return SharedInstance<CvFonts>::get();
}
} // namespace cv::pluginCore
