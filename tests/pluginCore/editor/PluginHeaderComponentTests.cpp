#include "pluginCore/editor/PluginHeaderComponent.h"

#include "pluginCore/lookAndFeel/ButtonShape.h"
#include "support/FindComponent.h"
#include "support/FrameworkLookAndFeel.h"
#include "support/Mouse.h"
#include "support/PresetSandbox.h"
#include "support/TestProduct.h"

#include <gmock/gmock.h>

namespace cv::pluginCore
{
namespace
{
using test::FrameworkLookAndFeel;
using Bounds = juce::Rectangle<int>;

class PluginHeaderComponentTest : public testing::Test
{
protected:
    juce::DrawableButton& getButton (const juce::String& name)
    {
        return test::getChildNamed<juce::DrawableButton> (header, name);
    }

    juce::DrawableButton& undoButton() { return getButton ("undo"); }

    juce::DrawableButton& redoButton() { return getButton ("redo"); }

    juce::DrawableButton& infoButton() { return getButton ("info"); }

    juce::DrawableButton& logoButton() { return getButton ("logo"); }

    std::vector<juce::DrawableButton*> allButtons()
    {
        return { &undoButton(), &redoButton(), &infoButton(), &logoButton() };
    }

    void show()
    {
        header.setBounds (20, 20, 1050, 69);
        header.addToDesktop (0);
        header.setVisible (true);
    }

    const FrameworkLookAndFeel lookAndFeel;
    const test::PresetSandbox sandbox;
    test::TestProduct product { sandbox.getLocations() };
    juce::UndoManager undoManager;
    PluginHeaderComponent header { product.getPresetsManager(), &undoManager };
};

TEST_F (PluginHeaderComponentTest, HoldsABarAndFourButtons)
{
    ASSERT_EQ (header.getNumChildComponents(), 5);
    EXPECT_EQ (header.getPresetsBar().getParentComponent(), &header);
    EXPECT_EQ (&logoButton(), &header.getLogoButton());
    EXPECT_TRUE (header.isOpaque());
    EXPECT_FALSE (header.isTimerRunning());

    for (auto* const button : allButtons())
    {
        EXPECT_TRUE (button->isVisible());
        EXPECT_TRUE (button->getTriggeredOnMouseDown());
        EXPECT_EQ (button->getStyle(), juce::DrawableButton::ImageFitted);
    }
}

struct Layout
{
    int width, height;
    Bounds logo, info, bar;
};

const Layout usualLayouts[] {
    { 1050, 69, { 31, 6, 98, 57 }, { 822, 6, 197, 57 }, { 354, 14, 342, 41 } },
    { 1200, 80, { 36, 8, 112, 64 }, { 939, 8, 225, 64 }, { 405, 17, 390, 46 } },
    { 100, 100, { 3, 10, 9, 80 }, { 79, 10, 18, 80 }, { 33, 22, 34, 56 } },
    { 1, 1, { 0, 0, 0, 1 }, { 1, 0, 0, 1 }, { 0, 0, 1, 1 } },
    { 0, 0, { 0, 0, 0, 0 }, { 0, 0, 0, 0 }, { 0, 0, 0, 0 } },
    { 10000, 10, { 300, 1, 940, 8 }, { 7820, 1, 1880, 8 }, { 3380, 1, 3240, 8 } },
    { 10, 10000, { 0, 1000, 1, 8000 }, { 8, 1000, 2, 8000 }, { 3, 2200, 4, 5600 } },
};

TEST_F (PluginHeaderComponentTest, LiesAsUsualWithoutALookOfItsOwn)
{
    for (const auto& layout : usualLayouts)
    {
        SCOPED_TRACE (juce::String (layout.width) + " x " + juce::String (layout.height));
        header.setSize (layout.width, layout.height);
        EXPECT_EQ (logoButton().getBounds(), layout.logo);
        EXPECT_EQ (infoButton().getBounds(), layout.info);
        EXPECT_EQ (header.getPresetsBar().getBounds(), layout.bar);
        EXPECT_EQ (header.getPresetsBarArea(), layout.bar);
        EXPECT_TRUE (undoButton().getBounds().isEmpty());
        EXPECT_TRUE (redoButton().getBounds().isEmpty());
    }
}

TEST_F (PluginHeaderComponentTest, NothingOverlapsOrLeavesTheHeaderAtAnySize)
{
    juce::Random random (53);

    for (auto i = 0; i < 10000; ++i)
    {
        const auto width = random.nextInt (random.nextBool() ? 5000 : 40);
        const auto height = random.nextInt (random.nextBool() ? 2000 : 20);
        header.setSize (width, height);
        const auto bar = header.getPresetsBarArea();
        SCOPED_TRACE (juce::String (width) + " x " + juce::String (height));

        ASSERT_GE (bar.getWidth(), 0);
        ASSERT_GE (bar.getHeight(), 0);
        ASSERT_LE (logoButton().getRight(), bar.getX());
        ASSERT_LE (bar.getRight(), infoButton().getX());

        for (const auto& area : { bar, logoButton().getBounds(), infoButton().getBounds() })
        {
            ASSERT_GE (area.getX(), 0);
            ASSERT_GE (area.getY(), 0);
            ASSERT_LE (area.getRight(), width);
            ASSERT_LE (area.getBottom(), height);
        }
    }
}

/** Puts the components in a row, in the order in which it gets them. */
class OwnLayout final : public FrameworkLookAndFeel, public PluginHeaderComponent::LookAndFeelMethods
{
public:
    void positionHeaderComponents (PluginHeaderComponent& header,
                                   PresetsBar& bar,
                                   juce::Button& undo,
                                   juce::Button& redo,
                                   juce::Button& info,
                                   juce::Button& logo) override
    {
        auto x = 0;

        for (auto* const component : std::initializer_list<juce::Component*> { &bar, &undo, &redo, &info, &logo })
            component->setBounds (x++, 0, 1, header.getHeight());
    }
};

TEST_F (PluginHeaderComponentTest, LeavesTheLayoutToALookThatHasOne)
{
    OwnLayout ownLayout;
    header.setLookAndFeel (&ownLayout);
    header.setSize (1050, 69);

    auto x = 0;
    EXPECT_EQ (header.getPresetsBar().getBounds(), Bounds (x++, 0, 1, 69));

    for (const auto* const button : allButtons())
        EXPECT_EQ (button->getBounds(), Bounds (x++, 0, 1, 69)) << button->getName();

    header.setLookAndFeel (nullptr);
}

TEST_F (PluginHeaderComponentTest, ButtonsAreStopsOfTheTabKeyWhereTheyHaveAPlace)
{
    header.setSize (1050, 69);
    EXPECT_FALSE (undoButton().getWantsKeyboardFocus());
    EXPECT_FALSE (redoButton().getWantsKeyboardFocus());
    EXPECT_FALSE (undoButton().isAccessible());
    EXPECT_FALSE (redoButton().isAccessible());

    OwnLayout ownLayout;
    header.setLookAndFeel (&ownLayout);
    header.setSize (1050, 70);

    for (auto* const button : allButtons())
    {
        EXPECT_TRUE (button->getWantsKeyboardFocus()) << button->getName();
        EXPECT_TRUE (button->isAccessible()) << button->getName();
        EXPECT_TRUE (button->getTitle().isNotEmpty()) << button->getName();
        EXPECT_TRUE (button->getTooltip().isNotEmpty()) << button->getName();
    }

    header.setLookAndFeel (nullptr);
}

TEST_F (PluginHeaderComponentTest, LogoAndInformationDoTheSameOnThePress)
{
    auto numClicks = 0;
    header.onLogoClicked = [&numClicks] { ++numClicks; };
    show();

    test::pressMouseOn (logoButton());
    EXPECT_EQ (numClicks, 1);
    test::releaseMouseOn (logoButton());
    EXPECT_EQ (numClicks, 1);

    test::pressMouseOn (infoButton());
    EXPECT_EQ (numClicks, 2);
    test::releaseMouseOn (infoButton());
    EXPECT_EQ (numClicks, 2);
}

TEST_F (PluginHeaderComponentTest, WithoutAnActionTheLogoDoesNothing)
{
    show();
    test::pressMouseOn (logoButton());
    test::releaseMouseOn (logoButton());
}

/** Counts up, and down when it is undone. */
class Counting final : public juce::UndoableAction
{
public:
    explicit Counting (int& counter) : count (counter) {}

    bool perform() override { return ++count, true; }

    bool undo() override { return --count, true; }

private:
    int& count;
};

TEST_F (PluginHeaderComponentTest, UndoesAndRedoesOnThePressWhereALookShowsTheButtons)
{
    auto count = 0;
    undoManager.perform (new Counting (count));
    show();
    undoButton().setBounds (200, 0, 30, 30);
    redoButton().setBounds (240, 0, 30, 30);

    test::pressMouseOn (undoButton());
    EXPECT_EQ (count, 0);
    test::releaseMouseOn (undoButton());
    EXPECT_EQ (count, 0);

    test::pressMouseOn (redoButton());
    EXPECT_EQ (count, 1);
    test::releaseMouseOn (redoButton());
    EXPECT_EQ (count, 1);
}

TEST_F (PluginHeaderComponentTest, WithoutAnUndoManagerUndoAndRedoDoNothing)
{
    PluginHeaderComponent other (product.getPresetsManager(), nullptr);

    for (const auto* const name : { "undo", "redo" })
        test::getChildNamed<juce::Button> (other, name).onClick();
}

const juce::DrawablePath& asPath (const juce::Component* image)
{
    return dynamic_cast<const juce::DrawablePath&> (*image);
}

/** Colours in the order of normal, over, down, disabled and switched on. */
std::vector<juce::Colour> getColours (juce::DrawableButton& button)
{
    std::vector<juce::Colour> colours;
    const auto add = [&colours] (const juce::Component* image) { colours.push_back (asPath (image).getFill().colour); };

    add (button.getNormalImage());
    add (button.getOverImage());
    add (button.getDownImage());

    button.setEnabled (false);
    add (test::findComponent<juce::DrawablePath> (button));
    button.setEnabled (true);

    button.setToggleState (true, juce::dontSendNotification);
    add (button.getNormalImage());
    button.setToggleState (false, juce::dontSendNotification);
    return colours;
}

TEST_F (PluginHeaderComponentTest, IconsStandOutFromTheBackground)
{
    for (const auto c : { FrameworkLookAndFeel::headerBackground, juce::Colours::white })
    {
        header.setColour (headerBackgroundColourId, c);

        for (auto* const button : { &undoButton(), &redoButton(), &infoButton() })
            EXPECT_THAT (getColours (*button),
                         testing::ElementsAre (c.contrasting (0.8f), c.contrasting (0.65f), c.contrasting (0.75f),
                                               c.contrasting (0.75f), c.contrasting (0.65f)));
    }
}

TEST_F (PluginHeaderComponentTest, TheLogoKeepsItsShapeWhateverTheColours)
{
    EXPECT_EQ (logoButton().getNormalImage(), nullptr);

    juce::Path shape;
    shape.addEllipse (0.0f, 0.0f, 3.0f, 4.0f);
    juce::MemoryOutputStream stream;
    shape.writePathToStream (stream);
    const auto block = stream.getMemoryBlock();
    header.setLogo (block.begin(), (int) block.getSize());
    const auto colours = getColours (infoButton());
    header.setColour (headerBackgroundColourId, juce::Colours::white);

    EXPECT_EQ (asPath (logoButton().getNormalImage()).getPath(), shape);
    EXPECT_EQ (getColours (logoButton()), colours);
    EXPECT_NE (getColours (infoButton()), colours);
}

TEST_F (PluginHeaderComponentTest, AButtonsShapeHasAColourForEachState)
{
    const std::vector colours { juce::Colours::red, juce::Colours::green, juce::Colours::blue, juce::Colours::pink };
    setButtonShape (logoButton(), {}, colours[0], colours[1], colours[2], colours[3]);

    EXPECT_THAT (getColours (logoButton()),
                 testing::ElementsAre (colours[0], colours[2], colours[1], colours[1], colours[3]));
}

TEST_F (PluginHeaderComponentTest, FillsItsBackground)
{
    header.setSize (1050, 69);
    const auto image = header.createComponentSnapshot (header.getLocalBounds());

    for (const auto x : { 0, 200, 1049 })
        for (const auto y : { 0, 68 })
            EXPECT_EQ (image.getPixelAt (x, y), FrameworkLookAndFeel::headerBackground) << x << ", " << y;
}

TEST_F (PluginHeaderComponentTest, TheTimerShowsTheArrowsUnderTheMouse)
{
    show();
    auto& bar = header.getPresetsBar();
    const auto& previous = *bar.findChildWithID (PresetsBar::previousButtonId);
    const auto& next = *bar.findChildWithID (PresetsBar::nextButtonId);
    const auto arrowsAreVisible = [&]
    {
        EXPECT_EQ (previous.isVisible(), next.isVisible());
        return previous.isVisible();
    };

    juce::Component elsewhere;
    elsewhere.setBounds (20, 200, 50, 50);
    elsewhere.addToDesktop (0);
    elsewhere.setVisible (true);
    EXPECT_TRUE (arrowsAreVisible());

    test::moveMouseTo (elsewhere);
    header.timerCallback();
    EXPECT_FALSE (arrowsAreVisible());

    for (auto* const component : std::initializer_list<juce::Component*> { &logoButton(), &bar })
    {
        test::moveMouseTo (*component);
        header.timerCallback();
        EXPECT_TRUE (arrowsAreVisible());

        bar.setEnabled (false);
        header.timerCallback();
        EXPECT_FALSE (arrowsAreVisible());
        bar.setEnabled (true);
    }
}

/** A shape as an SVG file has it, with the corners of its picture. */
juce::Path readSvg (const juce::String& name)
{
    juce::Path shape;
    const auto svg = juce::parseXML (juce::File (VARLO_RESOURCES).getChildFile ("icons/" + name));
    const auto box = juce::StringArray::fromTokens (svg->getStringAttribute ("viewBox"), " ", {});
    const auto x = box[0].getFloatValue();
    const auto y = box[1].getFloatValue();
    shape.startNewSubPath (x, y);
    shape.startNewSubPath (x + box[2].getFloatValue(), y + box[3].getFloatValue());

    for (const auto* const path : svg->getChildWithTagNameIterator ("path"))
        shape.addPath (juce::Drawable::parseSVGPath (path->getStringAttribute ("d")));

    return shape;
}

TEST_F (PluginHeaderComponentTest, IconsAreTheOnesThatAreDrawn)
{
    const auto getShape = [] (juce::DrawableButton& button) { return asPath (button.getNormalImage()).getPath(); };

    EXPECT_EQ (getShape (undoButton()).toString(), readSvg ("undo.svg").toString());
    EXPECT_EQ (getShape (redoButton()).toString(), readSvg ("redo.svg").toString());
    EXPECT_EQ (getShape (infoButton()).toString(), readSvg ("info.svg").toString());
}
} // namespace
} // namespace cv::pluginCore
