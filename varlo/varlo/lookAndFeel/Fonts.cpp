#include "varlo/lookAndFeel/Fonts.h"

#include "pluginCore/lookAndFeel/CvFonts.h"
#include "pluginCore/sharing/SharedInstance.h"

#include <VarloResources.h>

namespace cv::varlo
{
using pluginCore::makeEmbeddedFont;

Fonts::Fonts()
    : light (makeEmbeddedFont (resources::NunitoSans_7ptLight_ttf, resources::NunitoSans_7ptLight_ttfSize))
    , medium (makeEmbeddedFont (resources::NunitoSans_7ptMedium_ttf, resources::NunitoSans_7ptMedium_ttfSize))
    , regular (makeEmbeddedFont (resources::NunitoSans_7ptRegular_ttf, resources::NunitoSans_7ptRegular_ttfSize))
{
}

std::shared_ptr<Fonts> Fonts::getShared()
{
    return pluginCore::SharedInstance<Fonts>::get();
}
} // namespace cv::varlo
