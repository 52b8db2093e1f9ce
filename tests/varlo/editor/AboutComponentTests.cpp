#include "varlo/editor/AboutComponent.h"

#include "support/FindComponent.h"
#include "support/Mouse.h"
#include "support/ProcessorHarness.h"
#include "support/Rendering.h"

#include <gmock/gmock.h>

#include <random>

namespace cv::varlo
{
namespace
{
using cv::test::findComponent;
using testing::ElementsAre;
using testing::IsEmpty;
using Area = juce::Rectangle<int>;

TEST (AboutLayoutTest, FollowsTheWorkedSizes)
{
    // 3 % margin; of the 544 pixels left 54 are a step, 43 a line and 27 the last line.
    const auto usual = layOutAboutPanel (1050, 578);
    EXPECT_EQ (usual.copyright, Area (17, 534, 1016, 27));
    EXPECT_EQ (usual.name, Area (17, 125, 1016, 162));
    EXPECT_EQ (usual.version, Area (17, 269, 1016, 43));
    EXPECT_EQ (usual.link, Area (17, 330, 1016, 43));

    const auto small = layOutAboutPanel (100, 100);
    EXPECT_EQ (small.copyright, Area (3, 93, 94, 4));
    EXPECT_EQ (small.name, Area (3, 21, 94, 27));
    EXPECT_EQ (small.version, Area (3, 45, 94, 7));
    EXPECT_EQ (small.link, Area (3, 55, 94, 7));
}

TEST (AboutLayoutTest, HasNoHeightInATinyPanel)
{
    for (const auto size : { 0, 1, 9 })
    {
        const auto layout = layOutAboutPanel (size, size);

        for (const auto& area : { layout.name, layout.version, layout.link, layout.copyright })
            EXPECT_EQ (area.getHeight(), 0) << size;
    }
}

TEST (AboutLayoutTest, HasNoNegativeSizes)
{
    std::mt19937 random (5);

    for (auto i = 0; i < 10000; ++i)
    {
        const auto largest = i % 2 == 0 ? 60u : 5000u;
        const auto width = (int) (random() % largest);
        const auto height = (int) (random() % largest);
        const auto layout = layOutAboutPanel (width, height);

        for (const auto& area : { layout.name, layout.version, layout.link, layout.copyright })
        {
            ASSERT_GE (area.getWidth(), 0) << width << 'x' << height;
            ASSERT_GE (area.getHeight(), 0) << width << 'x' << height;
        }
    }
}

TEST (AboutLayoutTest, TheLinkIsAsWideAsItsTextInTheMiddle)
{
    EXPECT_EQ (narrowToText ({ 10, 20, 100, 30 }, 40), Area (40, 20, 40, 30));
    EXPECT_EQ (narrowToText ({ 10, 20, 100, 30 }, 41), Area (39, 20, 41, 30));
}

class AboutComponentTest : public testing::Test
{
protected:
    AboutComponentTest()
    {
        look.setColour (juce::Slider::thumbColourId, juce::Colours::orange);
        look.setColour (juce::Label::textColourId, juce::Colours::grey);
        panel.setLookAndFeel (&look);
        panel.setSize (1050, 578);
        panel.setVisible (true);
    }

    ~AboutComponentTest() override { panel.setLookAndFeel (nullptr); }

    juce::Label& findLabel (const juce::String& text)
    {
        return *findComponent<juce::Label> (panel, [&] (auto& label) { return label.getText() == text; });
    }

    /** As the mouse would, at a position in the panel, on whatever is there. */
    void click (juce::Point<int> position)
    {
        panel.addToDesktop (0);
        cv::test::sendMouse (panel, position.toFloat(), false);
        cv::test::sendMouse (panel, position.toFloat(), true);
        cv::test::sendMouse (panel, position.toFloat(), false);
        panel.removeFromDesktop();
    }

    juce::LookAndFeel_V4 look;
    test::ProcessorHarness harness;
    std::vector<juce::String> openedUrls;
    AboutComponent panel { harness.processor,
                           [this] (const juce::URL& url) { openedUrls.push_back (url.toString (true)); } };
    juce::Label& name = findLabel ("Varlo");
    juce::Label& version = findLabel (harness.processor.getVersionDisplayText());
    juce::Label& copyright = findLabel (juce::String::fromUTF8 ("\xc2\xa9 2025 Corvane"));
    juce::Label& link = findLabel ("corvane.example");
    juce::Label& spare = findLabel ({});
};

TEST_F (AboutComponentTest, TellsTheProductsFacts)
{
    EXPECT_EQ (panel.getNumChildComponents(), 5);
    EXPECT_TRUE (version.getText().startsWith ("v1."));

    for (auto* const label : { &name, &version, &copyright })
        EXPECT_EQ (label->getJustificationType(), juce::Justification::centred);

    for (auto* const label : { &link, &spare })
        EXPECT_EQ (label->getJustificationType(), juce::Justification::left | juce::Justification::bottom);

    EXPECT_EQ ((double) name.getProperties()["gradYProp"], 0.5);
    EXPECT_EQ ((double) link.getProperties()["gradYProp"], (double) 0.8f);
    EXPECT_FALSE (version.getProperties().contains ("gradYProp"));
    EXPECT_TRUE (link.getMouseCursor() == juce::MouseCursor::PointingHandCursor);
}

TEST_F (AboutComponentTest, PlacesItsTexts)
{
    EXPECT_EQ (name.getBounds(), Area (17, 125, 1016, 162));
    EXPECT_EQ (version.getBounds(), Area (17, 269, 1016, 43));
    EXPECT_EQ (copyright.getBounds(), Area (17, 534, 1016, 27));
    EXPECT_EQ (spare.getBounds(), copyright.getBounds());
}

TEST_F (AboutComponentTest, TheLinkIsNarrowedToItsTextInItsFont)
{
    const auto width = juce::GlyphArrangement::getStringWidth (look.getLabelFont (link), link.getText());
    EXPECT_EQ (link.getWidth(), (int) std::ceil (width));
    EXPECT_EQ (link.getX(), 17 + (1016 - link.getWidth()) / 2);
    EXPECT_EQ (link.getY(), 330);
    EXPECT_EQ (link.getHeight(), 43);
}

TEST_F (AboutComponentTest, ANewLookMeasuresTheLinkAnew)
{
    class LargeText final : public juce::LookAndFeel_V4
    {
        juce::Font getLabelFont (juce::Label&) override { return juce::Font (juce::FontOptions (40.0f)); }
    };

    const auto before = link.getWidth();
    LargeText large;
    panel.setLookAndFeel (&large);
    EXPECT_GT (link.getWidth(), before);
    panel.setLookAndFeel (&look);
    EXPECT_EQ (link.getWidth(), before);
}

TEST_F (AboutComponentTest, ColoursOfTheLookReachNameAndLinkOnly)
{
    juce::LookAndFeel_V4 other;
    other.setColour (juce::Slider::thumbColourId, juce::Colours::lime);
    other.setColour (juce::Label::textColourId, juce::Colours::white);
    panel.setLookAndFeel (&other);
    panel.sendLookAndFeelChange();

    for (auto* const label : { &name, &link })
        EXPECT_EQ (label->findColour (juce::Label::textColourId), juce::Colours::lime);

    for (auto* const label : { &version, &copyright, &spare })
    {
        EXPECT_FALSE (label->isColourSpecified (juce::Label::textColourId));
        EXPECT_EQ (label->findColour (juce::Label::textColourId), juce::Colours::white);
    }

    panel.setLookAndFeel (&look);
}

TEST_F (AboutComponentTest, CoversWhatIsBehindIt)
{
    const auto image = cv::test::render (panel);
    EXPECT_EQ (image.getPixelAt (0, 0), juce::Colour (0xff111111));
    EXPECT_EQ (image.getPixelAt (1049, 577), juce::Colour (0xff111111));
}

TEST_F (AboutComponentTest, AClickOnTheLinkOpensTheMakersSiteAndClosesThePanel)
{
    click (link.getBounds().getCentre());
    EXPECT_THAT (openedUrls, ElementsAre ("https://corvane.example"));
    EXPECT_FALSE (panel.isVisible());
}

TEST_F (AboutComponentTest, AClickAnywhereElseOnlyClosesThePanel)
{
    for (const auto position :
         { link.getBounds().getCentre().withX (link.getX() - 2),
           link.getBounds().getCentre().withX (link.getRight() + 2), name.getBounds().getCentre(),
           version.getBounds().getCentre(), copyright.getBounds().getCentre(), juce::Point (2, 2) })
    {
        panel.setVisible (true);
        click (position);
        EXPECT_FALSE (panel.isVisible()) << position.toString();
    }

    EXPECT_THAT (openedUrls, IsEmpty());
}

TEST_F (AboutComponentTest, HasNoNegativeSizesWhenTiny)
{
    for (const auto& [width, height] : { std::pair (0, 0), std::pair (1, 1), std::pair (20, 5), std::pair (5, 2000) })
    {
        panel.setSize (width, height);

        for (auto* const child : panel.getChildren())
        {
            EXPECT_GE (child->getWidth(), 0);
            EXPECT_GE (child->getHeight(), 0);
        }
    }
}
} // namespace
} // namespace cv::varlo
