#include "pluginCore/editor/DefaultLookAndFeel.h"
#include "pluginCore/presetsBar/PresetsBar.h"
#include "support/FindComponent.h"
#include "support/PresetSandbox.h"
#include "support/TemporaryHome.h"
#include "support/TestProduct.h"
#include "varlo/lookAndFeel/Layout.h"
#include "varlo/lookAndFeel/PluginLookAndFeel.h"

#include <gtest/gtest.h>

#include <random>

namespace cv::varlo
{
namespace
{
using Area = juce::Rectangle<int>;

struct HeaderCase
{
    int width, height;
    Area logo, info, bar;
};

const HeaderCase headerCases[] {
    { 1050, 69, { 31, 0, 98, 69 }, { 887, 0, 132, 69 }, { 354, 14, 342, 41 } },
    { 1, 1, { 0, 0, 0, 1 }, { 1, 0, 0, 1 }, { 0, 0, 1, 1 } },
    { 100, 100, { 3, 0, 9, 100 }, { 97, 0, 0, 100 }, { 33, 22, 34, 56 } },
    { 10000, 69, { 300, 0, 940, 69 }, { 7885, 0, 1815, 69 }, { 3380, 14, 3240, 41 } },
    { 69, 1050, { 2, 0, 6, 1050 }, { 67, 0, 0, 1050 }, { 22, 230, 25, 590 } },
};

/** A header with this look, and a bar that can have any size. */
class LookLayoutTest : public testing::Test
{
protected:
    const pluginCore::DefaultLookAndFeel<PluginLookAndFeel> defaultLook;
    PluginLookAndFeel& look = dynamic_cast<PluginLookAndFeel&> (juce::LookAndFeel::getDefaultLookAndFeel());
    const test::TemporaryHome home;
    const test::PresetSandbox sandbox;
    test::TestProduct product { sandbox.getLocations() };
    pluginCore::PluginHeaderComponent header { product.getPresetsManager(), nullptr };
    const juce::Component& info = test::getChildNamed<juce::Button> (header, "info");
    const juce::Component& undo = test::getChildNamed<juce::Button> (header, "undo");
    const juce::Component& redo = test::getChildNamed<juce::Button> (header, "redo");
    pluginCore::PresetsBar bar { product.getPresetsManager() };
    const juce::Component& previous = *bar.findChildWithID (pluginCore::PresetsBar::previousButtonId);
    const juce::Component& next = *bar.findChildWithID (pluginCore::PresetsBar::nextButtonId);
    const juce::Component& presets = *test::findComponent<juce::TextButton> (bar);
};

TEST_F (LookLayoutTest, HeaderHasTheLogoAtTheLeftAndTheInformationAtTheRight)
{
    for (const auto& [width, height, logoArea, infoArea, barArea] : headerCases)
    {
        header.setSize (width, height);
        EXPECT_EQ (header.getLogoButton().getBounds(), logoArea) << width << " x " << height;
        EXPECT_EQ (info.getBounds(), infoArea) << width << " x " << height;
        EXPECT_EQ (header.getPresetsBar().getBounds(), barArea) << width << " x " << height;
        EXPECT_EQ (undo.getBounds(), Area()) << "undo has no place";
        EXPECT_EQ (redo.getBounds(), Area()) << "redo has no place";
    }
}

struct BarCase
{
    int width, height;
    Area previous, presets, next;
};

const BarCase barCases[] {
    { 342, 41, { 0, 6, 41, 29 }, { 41, 0, 260, 41 }, { 301, 6, 41, 29 } },
    { 1, 1, { 0, 0, 1, 1 }, { 1, 0, 0, 1 }, { 1, 0, 0, 1 } },
    { 100, 100, { 0, 16, 100, 68 }, { 100, 0, 0, 100 }, { 100, 16, 0, 68 } },
    { 30, 40, { 0, 6, 30, 28 }, { 30, 0, 0, 40 }, { 30, 6, 0, 28 } },
    { 60, 40, { 0, 6, 40, 28 }, { 40, 0, 0, 40 }, { 40, 6, 20, 28 } },
    { 9000, 12, { 0, 2, 12, 8 }, { 12, 0, 8976, 12 }, { 8988, 2, 12, 8 } },
};

TEST_F (LookLayoutTest, BarHasBothArrowsInset)
{
    for (const auto& [width, height, previousArea, presetsArea, nextArea] : barCases)
    {
        bar.setSize (width, height);
        EXPECT_EQ (previous.getBounds(), previousArea) << width << " x " << height;
        EXPECT_EQ (next.getBounds(), nextArea) << width << " x " << height;
        EXPECT_EQ (presets.getBounds(), presetsArea) << width << " x " << height;
    }
}

TEST_F (LookLayoutTest, SliderPutsTheValueInTheRingOrIntoTheLastFifth)
{
    juce::Slider slider (juce::Slider::RotaryVerticalDrag, juce::Slider::TextBoxBelow);
    slider.setSize (130, 97);
    EXPECT_EQ (look.getSliderLayout (slider).sliderBounds, Area (0, 0, 130, 97));
    EXPECT_EQ (look.getSliderLayout (slider).textBoxBounds, Area (13, 36, 104, 24));

    slider.setSliderStyle (juce::Slider::LinearHorizontal);
    EXPECT_EQ (look.getSliderLayout (slider).sliderBounds, Area (0, 0, 104, 97));
    EXPECT_EQ (look.getSliderLayout (slider).textBoxBounds, Area (104, 0, 26, 97));

    EXPECT_EQ (look.getSliderThumbRadius (slider), 1);
}

TEST (SliderLayoutTest, HoldsInOddSizes)
{
    EXPECT_EQ (layOutSlider (1, 1, true).textBoxBounds, Area (0, 0, 1, 0));
    EXPECT_EQ (layOutSlider (100, 100, true).textBoxBounds, Area (10, 37, 80, 25));
    EXPECT_EQ (layOutSlider (10000, 10, true).textBoxBounds, Area (1000, 4, 8000, 2));
    EXPECT_EQ (layOutSlider (1, 1, false).sliderBounds, Area (0, 0, 1, 1));
    EXPECT_EQ (layOutSlider (1, 1, false).textBoxBounds, Area (1, 0, 0, 1));
    EXPECT_EQ (layOutSlider (3, 1000, false).sliderBounds, Area (0, 0, 2, 1000));
    EXPECT_EQ (layOutSlider (3, 1000, false).textBoxBounds, Area (2, 0, 1, 1000));
}

TEST (LookLayoutSizesTest, AreNeverNegativeAndStayInside)
{
    std::mt19937 random (1);
    std::uniform_int_distribution<int> length (0, 3000), shortLength (0, 20);

    for (auto i = 0; i < 10000; ++i)
    {
        const auto width = i % 3 == 0 ? shortLength (random) : length (random);
        const auto height = i % 5 == 0 ? shortLength (random) : length (random);
        const Area all (width, height);

        const auto header = layOutHeaderButtons (width, height);
        const auto bar = pluginCore::layOutPresetsBar (width, height);
        const auto rotary = layOutSlider (width, height, true);
        const auto linear = layOutSlider (width, height, false);

        for (const auto& area :
             { header.logo, header.info, bar.previousButton, bar.presetsButton, bar.nextButton, rotary.sliderBounds,
               rotary.textBoxBounds, linear.sliderBounds, linear.textBoxBounds })
        {
            ASSERT_GE (area.getWidth(), 0) << width << " x " << height;
            ASSERT_GE (area.getHeight(), 0) << width << " x " << height;
            ASSERT_TRUE (area.isEmpty() || all.contains (area)) << width << " x " << height;
        }

        ASSERT_LE (header.logo.getRight(), header.info.getX()) << width << " x " << height;
    }
}
} // namespace
} // namespace cv::varlo
