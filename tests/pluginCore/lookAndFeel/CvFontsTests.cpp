#include "pluginCore/lookAndFeel/CvFonts.h"

#include <gtest/gtest.h>

namespace cv::pluginCore
{
namespace
{
TEST (CvFontsTest, AreTheEmbeddedOnesInTheirOrder)
{
    const CvFonts fonts;

    const auto name = [] (const juce::Font& font)
    { return font.getTypefacePtr()->getName() + ", " + font.getTypefacePtr()->getStyle(); };

    EXPECT_EQ (name (fonts.regular), "Barlow, Regular");
    EXPECT_EQ (name (fonts.semiBold), "Barlow, SemiBold");
    EXPECT_EQ (name (fonts.bold), "Barlow, Bold");
    EXPECT_EQ (name (fonts.mono), "Hermit, medium");
}

TEST (CvFontsTest, AreFourteenUnitsHighAndNeitherTrackedNorSqueezed)
{
    const CvFonts fonts;

    for (const auto* font : { &fonts.regular, &fonts.semiBold, &fonts.bold, &fonts.mono })
    {
        EXPECT_EQ (font->getHeight(), 14.0f);
        EXPECT_EQ (font->getExtraKerningFactor(), 0.0f);
        EXPECT_EQ (font->getHorizontalScale(), 1.0f);
    }
}

TEST (CvFontsTest, AreMadeOncePerProcessAndGoWithTheirLastHolder)
{
    auto first = CvFonts::getShared();
    const std::weak_ptr<CvFonts> watch = first;
    auto second = CvFonts::getShared();
    EXPECT_EQ (first, second);

    first.reset();
    EXPECT_FALSE (watch.expired());

    second.reset();
    EXPECT_TRUE (watch.expired());
    EXPECT_EQ (CvFonts::getShared()->regular.getHeight(), 14.0f);
}

class FontFittingTest : public testing::Test
{
protected:
    float widthAt (float height) const
    {
        return std::ceil (juce::GlyphArrangement::getStringWidth (font.withHeight (height), text));
    }

    const CvFonts fonts;
    const juce::Font font = fonts.regular;
    const juce::String text { "Resonance" };
};

TEST_F (FontFittingTest, TakesTheFullHeightWhereTheTextFits)
{
    const auto textWidth = widthAt (40.0f);
    ASSERT_GT (textWidth, 100.0f);

    EXPECT_EQ (fitFontHeight (font, textWidth, 40.0f, text, 0.0f), 40.0f);
    EXPECT_EQ (fitFontHeight (font, textWidth + 8.0f, 40.0f, text, 8.0f), 40.0f);
    EXPECT_EQ (fitFontHeight (font, textWidth, 40.5f, "a", 0.0f), 40.5f);
}

TEST_F (FontFittingTest, TruncatesTheHeightThatFits)
{
    const auto textWidth = widthAt (40.0f);

    EXPECT_EQ (fitFontHeight (font, textWidth - 1.0f, 40.0f, text, 0.0f), 39.0f);
    EXPECT_EQ (fitFontHeight (font, textWidth, 40.0f, text, 1.0f), 39.0f);
    EXPECT_EQ (fitFontHeight (font, textWidth / 2.0f, 40.0f, text, 0.0f), 20.0f);
    EXPECT_EQ (fitFontHeight (font, textWidth / 2.0f + 5.0f, 40.0f, text, 5.0f), 20.0f);
}

TEST_F (FontFittingTest, MeasuresWithoutSqueezing)
{
    const auto textWidth = widthAt (40.0f);
    EXPECT_EQ (fitFontHeight (font.withHorizontalScale (0.5f), textWidth / 2.0f, 40.0f, text, 0.0f), 20.0f);
}

TEST_F (FontFittingTest, NeverGoesBelowZero)
{
    EXPECT_EQ (fitFontHeight (font, 0.0f, 40.0f, text, 0.0f), 0.0f);
    EXPECT_EQ (fitFontHeight (font, 10.0f, 40.0f, text, 20.0f), 0.0f);
}

TEST_F (FontFittingTest, TextWithoutAWidthFitsEverywhere)
{
    EXPECT_EQ (fitFontHeight (font, 0.0f, 40.0f, {}, 0.0f), 40.0f);
    EXPECT_EQ (fitFontHeight (font, 0.0f, 40.0f, {}, 5.0f), 40.0f);
}
} // namespace
} // namespace cv::pluginCore
