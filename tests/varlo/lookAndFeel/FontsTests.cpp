#include "varlo/lookAndFeel/Fonts.h"

#include "varlo/lookAndFeel/PluginLookAndFeel.h"

#include <gtest/gtest.h>

namespace cv::varlo
{
namespace
{
TEST (FontsTest, AreTheEmbeddedOnes)
{
    const Fonts fonts;

    EXPECT_EQ (fonts.light.getTypefacePtr()->getName(), "Nunito Sans 7pt");
    EXPECT_EQ (fonts.light.getTypefacePtr()->getStyle(), "Light");
    EXPECT_EQ (fonts.medium.getTypefacePtr()->getStyle(), "Medium");
    EXPECT_EQ (fonts.regular.getTypefacePtr()->getStyle(), "Regular");
}

TEST (FontsTest, AreFourteenUnitsHighAndNeitherTrackedNorSqueezed)
{
    const Fonts fonts;

    for (const auto* font : { &fonts.light, &fonts.medium, &fonts.regular })
    {
        EXPECT_EQ (font->getHeight(), 14.0f);
        EXPECT_EQ (font->getExtraKerningFactor(), 0.0f);
        EXPECT_EQ (font->getHorizontalScale(), 1.0f);
    }
}

TEST (FontsTest, AreOnePerProcessAndGoWithTheirLastLook)
{
    auto first = std::make_unique<PluginLookAndFeel>();
    const std::weak_ptr<Fonts> watch = first->fonts;
    auto second = std::make_unique<PluginLookAndFeel>();
    EXPECT_EQ (first->fonts, second->fonts);

    first.reset();
    EXPECT_FALSE (watch.expired());

    second.reset();
    EXPECT_TRUE (watch.expired());
    EXPECT_EQ (PluginLookAndFeel().fonts->medium.getHeight(), 14.0f);
}

TEST (FontsTest, AreCopiedByTheLook)
{
    const PluginLookAndFeel look;
    EXPECT_EQ (look.lightFont, look.fonts->light);
    EXPECT_EQ (look.mediumFont, look.fonts->medium);
    EXPECT_EQ (look.regularFont, look.fonts->regular);
}
} // namespace
} // namespace cv::varlo
