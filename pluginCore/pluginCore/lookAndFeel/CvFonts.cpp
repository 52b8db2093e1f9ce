#include "pluginCore/lookAndFeel/CvFonts.h"

#include "pluginCore/lookAndFeel/EmbeddedFont.h"
#include "pluginCore/sharing/SharedInstance.h"

#include <PluginCoreResources.h>

namespace cv::pluginCore
{
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
