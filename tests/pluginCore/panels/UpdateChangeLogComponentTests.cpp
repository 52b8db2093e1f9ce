#include "pluginCore/panels/UpdateChangeLogComponent.h"

#include "pluginCore/lookAndFeel/LookAndFeel.h"
#include "support/KeptTranslations.h"
#include "support/Rendering.h"

#include <gmock/gmock.h>

#include <ctime>
#include <malloc.h>
#include <random>

namespace cv::pluginCore
{
namespace
{
using cv::test::render;
using testing::ElementsAre;

/** A change log with the look of the framework, in the language that is in force when it is made. */
struct ChangeLog
{
    ChangeLog() : ChangeLog ([this] (const juce::URL& url) { events.push_back (url.toString (true)); }) {}

    explicit ChangeLog (UpdateChangeLogComponent::UrlOpener openUrl) : component (std::move (openUrl))
    {
        component.setLookAndFeel (&lookAndFeel);
    }

    ~ChangeLog() { component.setLookAndFeel (nullptr); }

    template <typename Type>
    Type& find (const std::function<bool (Type&)>& matches)
    {
        for (auto* const child : component.getChildren())
            if (auto* const found = dynamic_cast<Type*> (child))
                if (matches (*found))
                    return *found;

        throw std::runtime_error ("no such child");
    }

    juce::TextButton& button (const juce::String& text)
    {
        return find<juce::TextButton> ([&] (auto& child) { return child.getButtonText() == text; });
    }

    juce::Label& title()
    {
        return find<juce::Label> ([] (auto&) { return true; });
    }

    DisplayTextComponent& textPanel()
    {
        return find<DisplayTextComponent> ([] (auto&) { return true; });
    }

    std::vector<juce::Rectangle<int>> layout()
    {
        std::vector<juce::Rectangle<int>> areas;

        for (const auto* const child : component.getChildren())
            areas.push_back (child->getBounds());

        return areas;
    }

    LookAndFeel lookAndFeel;
    std::vector<juce::String> events;
    UpdateChangeLogComponent component;
};

class UpdateChangeLogComponentTest : public testing::Test, protected ChangeLog
{
protected:
    juce::TextButton& closeButton() { return button ("close"); }

    juce::TextButton& downloadButton() { return button ("proceed to download page"); }
};

TEST_F (UpdateChangeLogComponentTest, IsHiddenUntilItsOwnerShowsIt)
{
    EXPECT_FALSE (component.isVisible());
    EXPECT_EQ (title().getText(), "An update is available:");

    for (const auto* const child : component.getChildren())
        EXPECT_TRUE (child->isVisible());
}

TEST (UpdateChangeLogLanguageTest, SpeaksTheLanguageInForce)
{
    const cv::test::KeptTranslations translations;
    juce::LocalisedStrings::setCurrentMappings (
        new juce::LocalisedStrings ("language: French\n"
                                    "countries: fr\n"
                                    "\"close\" = \"fermer\"\n"
                                    "\"An update is available\" = \"Neuf\"\n"
                                    "\"proceed to download page\" = \"visiter\"\n",
                                    false));
    ChangeLog changeLog;
    EXPECT_EQ (changeLog.title().getText(), "Neuf:");
    EXPECT_NO_THROW (changeLog.button ("fermer"));
    EXPECT_NO_THROW (changeLog.button ("visiter"));
}

TEST_F (UpdateChangeLogComponentTest, CloseButtonCallsItsHandler)
{
    component.downloadUrl = juce::URL ("https://example.com/product");
    component.onClose = [this] { events.push_back ("close"); };
    component.onDownload = [this] { events.push_back ("download"); };

    closeButton().onClick();
    EXPECT_THAT (events, ElementsAre ("close"));
}

TEST_F (UpdateChangeLogComponentTest, EscapeClosesAndOtherKeysDont)
{
    component.onClose = [this] { events.push_back ("close"); };

    EXPECT_FALSE (component.keyPressed (juce::KeyPress (juce::KeyPress::spaceKey)));
    EXPECT_TRUE (events.empty());
    EXPECT_TRUE (component.keyPressed (juce::KeyPress (juce::KeyPress::escapeKey)));
    EXPECT_THAT (events, ElementsAre ("close"));
}

TEST_F (UpdateChangeLogComponentTest, DownloadButtonOpensThePageAndThenCallsItsHandler)
{
    component.downloadUrl = juce::URL ("https://example.com/product");
    component.onClose = [this] { events.push_back ("close"); };
    component.onDownload = [this] { events.push_back ("download"); };

    downloadButton().onClick();
    EXPECT_THAT (events, ElementsAre ("https://example.com/product", "download"));
}

TEST_F (UpdateChangeLogComponentTest, DownloadButtonWithoutAPageCallsItsHandlerOnly)
{
    component.onDownload = [this] { events.push_back ("download"); };

    downloadButton().onClick();
    EXPECT_THAT (events, ElementsAre ("download"));
}

TEST_F (UpdateChangeLogComponentTest, ButtonsDoWithoutHandlers)
{
    closeButton().onClick();
    downloadButton().onClick();
    EXPECT_TRUE (events.empty());

    ChangeLog withoutBrowser { UpdateChangeLogComponent::UrlOpener() };
    withoutBrowser.component.downloadUrl = juce::URL ("https://example.com/product");
    withoutBrowser.button ("proceed to download page").onClick();
}

TEST_F (UpdateChangeLogComponentTest, DimsWhatLiesBelowAndPaintsARoundedBox)
{
    for (auto* const child : component.getChildren())
        child->setVisible (false);

    component.setColour (changeLogBackgroundColourId, juce::Colours::red);
    component.setSize (400, 300);

    // The box is (60, 45, 280, 210), its corners are 4 pixels round.
    const auto image = render (component);
    EXPECT_EQ (image.getPixelAt (0, 0).getARGB(), 0x66000000u);
    EXPECT_EQ (image.getPixelAt (399, 299).getARGB(), 0x66000000u);
    EXPECT_EQ (cv::test::getAreaOf (image, juce::Colours::red), juce::Rectangle (60, 45, 280, 210));
    EXPECT_EQ (image.getPixelAt (60, 45).getARGB(), 0x66000000u);
    EXPECT_EQ (image.getPixelAt (62, 47), juce::Colours::red);
    EXPECT_EQ (image.getPixelAt (64, 45), juce::Colours::red);
}

TEST_F (UpdateChangeLogComponentTest, LaysOutItsPartsInItsBox)
{
    component.setSize (1050, 900);

    const juce::Rectangle contentArea (207, 185, 635, 530);
    const auto textWidth = [&] (juce::TextButton& button)
    {
        return juce::GlyphArrangement::getStringWidthInt (lookAndFeel.labelFont.withHeight (0.7f * 63.0f),
                                                          button.getButtonText());
    };
    const auto expected =
        layOutChangeLog (contentArea, textWidth (closeButton()) + 63, textWidth (downloadButton()) + 63);

    EXPECT_EQ (title().getBounds(), expected.title);
    EXPECT_EQ (textPanel().getBounds(), expected.textPanel);
    EXPECT_EQ (closeButton().getBounds(), expected.closeButton);
    EXPECT_EQ (downloadButton().getBounds().getRight(), closeButton().getX() - 63);
    EXPECT_FLOAT_EQ (component.getTextEditor().getFont().getHeight(), 31.5f);
}

TEST_F (UpdateChangeLogComponentTest, ButtonsShowTheirWholeText)
{
    for (const auto& size : { juce::Point (1050, 900), juce::Point (1600, 700), juce::Point (700, 400) })
    {
        component.setSize (size.x, size.y);

        for (auto* const button : { &closeButton(), &downloadButton() })
        {
            const auto font = lookAndFeel.getTextButtonFont (*button, button->getHeight());
            EXPECT_GE (font.getHeight(), 0.6f * (float) button->getHeight());
            EXPECT_LE (juce::GlyphArrangement::getStringWidth (font, button->getButtonText()),
                       (float) button->getWidth());
        }
    }
}

TEST_F (UpdateChangeLogComponentTest, LayoutDoesNotDependOnTheSizesBefore)
{
    for (const auto& size :
         { juce::Point (1050, 900), juce::Point (300, 200), juce::Point (1, 1), juce::Point (800, 700) })
    {
        component.setSize (size.x, size.y);

        ChangeLog fresh;
        fresh.component.setSize (size.x, size.y);
        EXPECT_EQ (layout(), fresh.layout()) << size.toString();
    }
}

TEST_F (UpdateChangeLogComponentTest, LayoutFollowsAChangeOfLook)
{
    component.setSize (1050, 900);
    const auto former = layout();

    lookAndFeel.labelFont = lookAndFeel.monoFont;
    component.sendLookAndFeelChange();
    EXPECT_NE (layout(), former);
}

TEST_F (UpdateChangeLogComponentTest, LongTextIsCutLeftOfTheCloseButton)
{
    auto& button = downloadButton();
    button.setButtonText ("proceed to the page from which the latest version can be downloaded");
    component.setSize (1050, 900);

    EXPECT_EQ (button.getX(), 207);
    EXPECT_EQ (button.getRight(), closeButton().getX() - 63);
    EXPECT_EQ (closeButton().getRight(), 207 + 635);
}

TEST_F (UpdateChangeLogComponentTest, HasNoNegativeSizesAndPaintsInAnySize)
{
    std::mt19937 random (5);
    std::uniform_int_distribution<int> size (1, 1500), smallSize (1, 40);

    for (auto i = 0; i < 200; ++i)
    {
        component.setSize (i % 2 == 0 ? smallSize (random) : size (random),
                           i % 3 == 0 ? smallSize (random) : size (random));

        for (const auto& area : layout())
        {
            ASSERT_GE (area.getWidth(), 0);
            ASSERT_GE (area.getHeight(), 0);
        }

        if (i < 10)
            render (component);
    }
}

TEST_F (UpdateChangeLogComponentTest, GivesTheTextItsColours)
{
    const juce::Colour background (0xff111111);
    EXPECT_EQ (textPanel().findColour (displayTextBackgroundColourId), background.darker (0.1f));
    EXPECT_EQ (textPanel().findColour (displayTextTextColourId), background.contrasting (0.8f));
    EXPECT_EQ (component.getTextEditor().findColour (juce::TextEditor::backgroundColourId), background.darker (0.1f));

    component.setColour (changeLogBackgroundColourId, juce::Colours::white);
    EXPECT_EQ (textPanel().findColour (displayTextBackgroundColourId), juce::Colours::white.darker (0.1f));
    EXPECT_EQ (textPanel().findColour (displayTextTextColourId), juce::Colours::white.contrasting (0.8f));
}

TEST_F (UpdateChangeLogComponentTest, LeavesTheColoursUnderALookWithoutIts)
{
    UpdateChangeLogComponent other;
    EXPECT_FALSE (other.getTextEditor().isColourSpecified (juce::TextEditor::backgroundColourId));
    EXPECT_FALSE (other.getTextEditor().getParentComponent()->isColourSpecified (displayTextBackgroundColourId));
}

TEST_F (UpdateChangeLogComponentTest, TextStandsThereUntilItIsReplacedAndFollowsTheSize)
{
    component.setSize (1050, 900);
    component.getTextEditor().setText ("one line", false);
    const auto height = component.getTextEditor().getTextHeight();

    component.setSize (2100, 1800);
    EXPECT_EQ (component.getTextEditor().getText(), "one line");
    EXPECT_GT (component.getTextEditor().getTextHeight(), height * 3 / 2);
    EXPECT_LT (component.getTextEditor().getTextHeight(), height * 5 / 2);
}

TEST_F (UpdateChangeLogComponentTest, ShowsWhatItIsGiven)
{
    EXPECT_TRUE (component.setChangeLog ("It glides\x1d now."));
    EXPECT_EQ (component.getTextEditor().getText(), "It glides now.");

    for (const auto& nothing : { juce::String(), juce::String::charToString (0x301) })
    {
        EXPECT_FALSE (component.setChangeLog (nothing));
        EXPECT_EQ (component.getTextEditor().getText(), "It glides now.");
    }
}

/** The time that this thread has been at work, in milliseconds. */
double getWorkMilliseconds()
{
    timespec time {};
    clock_gettime (CLOCK_THREAD_CPUTIME_ID, &time);
    return (double) time.tv_sec * 1e3 + (double) time.tv_nsec / 1e6;
}

/** What the program holds of the heap, in bytes. */
size_t getHeapBytes()
{
    const auto info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

/** How much more of the system's memory the heap takes at most while this lives than before, in bytes. What was free in
    the heap already is not counted.
*/
class HeapGrowth
{
public:
    HeapGrowth()
    {
        // All comes from the one heap, which grows at its end, and nothing goes back. A trim on demand still does that.
        mallopt (M_MMAP_MAX, 0);
        mallopt (M_TRIM_THRESHOLD, std::numeric_limits<int>::max());
        malloc_trim (0);
        start = mallinfo2().arena;
    }

    ~HeapGrowth()
    {
        // As glibc has them at first.
        mallopt (M_MMAP_MAX, 65536);
        mallopt (M_TRIM_THRESHOLD, 128 * 1024);
    }

    size_t getPeakBytes() const { return mallinfo2().arena - start; }

private:
    size_t start = 0;

    JUCE_DECLARE_NON_COPYABLE (HeapGrowth)
};

/** It is laid out in less than 50 ms; without limits this takes from 0.7 s to minutes. */
TEST_F (UpdateChangeLogComponentTest, LaysOutTheLongestChangeLogsQuickly)
{
#if defined(__OPTIMIZE__)
    constexpr auto maxMilliseconds = 400.0;
#else
    constexpr auto maxMilliseconds = 8000.0;
#endif
    constexpr auto maxHeapBytes = 10000000u;
    constexpr auto maxCharacters = 256 * 1024;

    for (const auto* const text : { "\n", "a", "a ", "W\n", "0123456789abcde\n", "漢", "漢a", "あ a", "😀\n", "?!" })
    {
        const auto part = juce::String::fromUTF8 (text);

#if JUCE_DEBUG
        // JUCE asserts where no font of the system has a character.
        if (! part.containsOnly (juce::String ("\na W0123456789abcde?!")))
            continue;
#endif

        const auto changeLog = juce::String::repeatedString (part, maxCharacters / part.length());
        component.setSize (350, 250);

        const auto heapBytes = getHeapBytes();
        const HeapGrowth heapGrowth;
        auto start = getWorkMilliseconds();
        component.setChangeLog (changeLog);
        EXPECT_LT (getWorkMilliseconds() - start, maxMilliseconds) << text;
        start = getWorkMilliseconds();
        component.setSize (1050, 900);
        EXPECT_LT (getWorkMilliseconds() - start, maxMilliseconds) << text;
        start = getWorkMilliseconds();
        render (component);
        EXPECT_LT (getWorkMilliseconds() - start, maxMilliseconds) << text;
        EXPECT_LT (getHeapBytes(), heapBytes + maxHeapBytes) << text;
        EXPECT_LT (heapGrowth.getPeakBytes(), maxHeapBytes) << text;
    }
}
} // namespace
} // namespace cv::pluginCore
