#include "pluginCore/lookAndFeel/FileRowPainter.h"

#include "pluginCore/lookAndFeel/LookAndFeel.h"
#include "support/Rendering.h"

#include <gtest/gtest.h>

#include <random>

namespace cv::pluginCore
{
namespace
{
using cv::test::getAreaOf;
using cv::test::getAreaWhere;
using cv::test::getInkArea;
using cv::test::getTextArea;
using cv::test::render;
using Area = juce::Rectangle<int>;

const juce::Colour detailColour { 0xff555555 };

/** A list of files without files. */
class FakeDisplay : public juce::DirectoryContentsDisplayComponent
{
public:
    FakeDisplay() : DirectoryContentsDisplayComponent (list) {}

    int getNumSelectedFiles() const override { return 0; }

    juce::File getSelectedFile (int) const override { return {}; }

    void deselectAllFiles() override {}

    void scrollToTop() override {}

    void setSelectedFile (const juce::File&) override {}

private:
    juce::TimeSliceThread thread { "files" };
    juce::DirectoryContentsList list { nullptr, thread };
};

class FakeList : public juce::Component, public FakeDisplay
{
};

class FileRowTest : public testing::Test
{
protected:
    static constexpr auto rowHeight = 20;

    FileRowTest()
    {
        list.setLookAndFeel (&lookAndFeel);
        list.setColour (juce::DirectoryContentsDisplayComponent::textColourId, juce::Colours::lime);
        list.setColour (juce::DirectoryContentsDisplayComponent::highlightedTextColourId, juce::Colours::yellow);
        list.setColour (juce::DirectoryContentsDisplayComponent::highlightColourId, juce::Colours::blue);
        icon.clear (icon.getBounds(), juce::Colours::red);
    }

    ~FileRowTest() override { list.setLookAndFeel (nullptr); }

    juce::Image draw (int width, bool isDirectory = false, bool isSelected = false)
    {
        return draw (width, list, &icon, isDirectory, isSelected);
    }

    juce::Image draw (int width, FakeDisplay& display, juce::Image* iconToDraw, bool isDirectory, bool isSelected)
    {
        return draw ("HHHH", width, display, iconToDraw, isDirectory, isSelected);
    }

    juce::Image drawName (const juce::String& name) { return draw (name, 300, list, &icon, false, false); }

    juce::Image draw (const juce::String& name,
                      int width,
                      FakeDisplay& display,
                      juce::Image* iconToDraw,
                      bool isDirectory,
                      bool isSelected)
    {
        return render (width, rowHeight,
                       [&] (juce::Graphics& g)
                       {
                           lookAndFeel.drawFileBrowserRow (g, width, rowHeight, {}, name, iconToDraw, "1 kB", "1 Jan",
                                                           isDirectory, isSelected, 0, display);
                       });
    }

    LookAndFeel lookAndFeel;
    FakeList list;
    juce::Image icon { juce::Image::ARGB, 10, 10, true, juce::SoftwareImageType() };
};

TEST_F (FileRowTest, NarrowRowShowsTheNameOnly)
{
    const auto layout = layOutFileRow (450, rowHeight, true, false);
    EXPECT_FALSE (layout.hasDetails);
    EXPECT_EQ (layout.icon, Area (2, 2, 26, 16));
    EXPECT_EQ (layout.name, Area (30, 0, 420, 20));

    EXPECT_TRUE (getTextArea (draw (450), detailColour).isEmpty());
}

TEST_F (FileRowTest, WideRowGainsSizeAndTime)
{
    const auto layout = layOutFileRow (451, rowHeight, true, false);
    EXPECT_TRUE (layout.hasDetails);
    EXPECT_EQ (layout.icon, Area (2, 2, 26, 16));
    EXPECT_EQ (layout.name, Area (30, 0, 286, 20));
    EXPECT_EQ (layout.size, Area (316, 0, 37, 20));
    EXPECT_EQ (layout.time, Area (361, 0, 82, 20));

    const auto image = draw (451);
    EXPECT_FALSE (getTextArea (image.getClippedImage (layout.size), detailColour).isEmpty());
    EXPECT_FALSE (getTextArea (image.getClippedImage (layout.time), detailColour).isEmpty());
    EXPECT_TRUE (getTextArea (image.getClippedImage (layout.name), detailColour).isEmpty());
}

TEST_F (FileRowTest, FoldersHaveNoSizeAndTime)
{
    EXPECT_EQ (layOutFileRow (1000, rowHeight, true, true).name, Area (30, 0, 970, 20));
    EXPECT_TRUE (getTextArea (draw (1000, true), detailColour).isEmpty());
}

TEST_F (FileRowTest, NameStandsBehindTheIcon)
{
    const auto image = draw (300);
    EXPECT_EQ (getAreaOf (image, juce::Colours::red), Area (10, 5, 10, 10));

    const auto name = getTextArea (image, juce::Colours::lime);
    EXPECT_GE (name.getX(), 30);
    EXPECT_LE (name.getX(), 33);
}

TEST_F (FileRowTest, NameIsShownAsFarAsItCanBeShaped)
{
    const auto expectShown = [this] (const juce::String& name, const juce::String& shown)
    { EXPECT_TRUE (test::areSame (drawName (name), drawName (shown))) << name; };
    const auto joint = [] (juce::juce_wchar code) { return "HH" + juce::String::charToString (code) + "HH"; };

    ASSERT_FALSE (test::areSame (drawName ("HHHH"), drawName ("HH HH")));
    expectShown (joint (0x1c), "HHHH");    // a separator that ends a paragraph, but no line
    expectShown (joint (0x301), "HHHH");   // a combining acute
    expectShown (joint (0x2028), "HH HH"); // the end of a line
    expectShown (joint (0x5d0), "HH?HH");  // a letter that runs from right to left
    expectShown (juce::String::charToString (0x301), "?");
}

TEST_F (FileRowTest, LargeIconIsReduced)
{
    icon = icon.rescaled (64, 64);
    EXPECT_EQ (getInkArea (draw (300).getClippedImage ({ 0, 0, 28, rowHeight })), Area (7, 2, 16, 16));
}

TEST_F (FileRowTest, NameMovesLeftWithoutIcons)
{
    EXPECT_EQ (layOutFileRow (300, rowHeight, false, false).name, Area (10, 0, 290, 20));

    const auto expectNoIcon = [] (const juce::Image& image)
    {
        EXPECT_TRUE (getAreaOf (image, juce::Colours::red).isEmpty());
        const auto name = getTextArea (image, juce::Colours::lime);
        EXPECT_GE (name.getX(), 10);
        EXPECT_LE (name.getX(), 13);
    };

    expectNoIcon (draw (300, list, nullptr, false, false));

    list.getProperties().set ("noFolderIcon", true);
    expectNoIcon (draw (300));
}

TEST_F (FileRowTest, InvalidIconLeavesItsPlaceEmpty)
{
    juce::Image invalid;
    const auto ink = getInkArea (draw (300, list, &invalid, false, false));
    EXPECT_GE (ink.getX(), 29);
    EXPECT_LE (ink.getX(), 33);
}

TEST_F (FileRowTest, SelectionIsRoundedAndOverTheListsBackground)
{
    list.setColour (juce::TreeView::backgroundColourId, juce::Colours::white);
    const auto image = draw (300, false, true);

    EXPECT_EQ (image.getPixelAt (0, 0), juce::Colours::white);
    EXPECT_EQ (image.getPixelAt (299, 19), juce::Colours::white);
    EXPECT_EQ (image.getPixelAt (5, 0), juce::Colours::blue);
    EXPECT_EQ (image.getPixelAt (1, 10), juce::Colours::blue);
    EXPECT_EQ (image.getPixelAt (298, 10), juce::Colours::blue);

    // On blue, letters in yellow are as red as they are green, and those in lime aren't red at all.
    const auto text = image.getClippedImage ({ 30, 2, 200, 16 });
    const auto isYellowish = [] (juce::Colour colour) { return colour.getRed() > 100 && colour.getGreen() > 100; };
    const auto isGreenish = [] (juce::Colour colour) { return colour.getRed() < 20 && colour.getGreen() > 100; };
    EXPECT_FALSE (getAreaWhere (text, isYellowish).isEmpty());
    EXPECT_TRUE (getAreaWhere (text, isGreenish).isEmpty());
}

TEST_F (FileRowTest, TransparentSelectionLeavesTheIconOpaque)
{
    list.setColour (juce::DirectoryContentsDisplayComponent::highlightColourId, juce::Colours::transparentBlack);
    EXPECT_EQ (getAreaOf (draw (300, false, true), juce::Colours::red), Area (10, 5, 10, 10));
}

TEST_F (FileRowTest, ListThatIsNoComponentTakesTheLooksColours)
{
    lookAndFeel.setColour (juce::DirectoryContentsDisplayComponent::textColourId, juce::Colours::magenta);
    FakeDisplay display;
    EXPECT_FALSE (getTextArea (draw (300, display, &icon, false, false), juce::Colours::magenta).isEmpty());
}

TEST (FileRowLayoutTest, HasNoNegativeSizes)
{
    std::mt19937 random (7);
    std::uniform_int_distribution<int> width (0, 1200), height (0, 400);

    for (auto i = 0; i < 10000; ++i)
    {
        const auto layout = layOutFileRow (width (random), height (random), i % 2 == 0, i % 3 == 0);

        for (const auto& area : { layout.icon, layout.name, layout.size, layout.time })
        {
            ASSERT_GE (area.getWidth(), 0);
            ASSERT_GE (area.getHeight(), 0);
        }
    }
}
} // namespace
} // namespace cv::pluginCore
