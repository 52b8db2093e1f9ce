#include "pluginCore/editor/PluginEditor.h"

#include "support/EditorWindow.h"
#include "support/FakeDisplays.h"
#include "support/MessageLoop.h"
#include "support/PresetSandbox.h"
#include "support/TemporaryHome.h"

#include <gmock/gmock.h>

#include <fstream>
#include <malloc.h>
#include <unistd.h>

namespace cv::pluginCore
{
namespace
{
using cv::test::EditorWindow;
using cv::test::FakeDisplays;
using cv::test::PresetSandbox;
using cv::test::runMessageLoopFor;
using cv::test::runMessageLoopUntil;
using cv::test::TemporaryHome;
using cv::test::TestProduct;

class PluginEditorTest : public testing::Test
{
protected:
    PluginEditorTest() { settings().setProperty ("checkForUpdates", "0", nullptr); }

    juce::ValueTree& settings() { return product.getGlobalSettings().getValues(); }

    /** The size of an editor that is opened now. */
    juce::Point<int> openingSize()
    {
        const EditorWindow editor (product);
        return { editor->getWidth(), editor->getHeight() };
    }

    void setDefaultSize (const juce::String& width, const juce::String& height)
    {
        settings().setProperty ("defaultWidth", width, nullptr);
        settings().setProperty ("defaultHeight", height, nullptr);
    }

    const TemporaryHome home;
    const FakeDisplays displays { { 1.0 }, { 1600, 1200 } };
    const PresetSandbox sandbox;
    TestProduct product { sandbox.getLocations() };
};

using Size = juce::Point<int>;

TEST_F (PluginEditorTest, OpensOnANewMachineAtTheFirstWidthAndTheAspectRatio)
{
    EXPECT_EQ (openingSize(), Size (1050, 525));
}

TEST_F (PluginEditorTest, OpensAtTheDefaultSize)
{
    setDefaultSize ("800", "400");
    EXPECT_EQ (openingSize(), Size (800, 400));
}

TEST_F (PluginEditorTest, OpensAtTheDefaultHeightToo)
{
    // As high as it is wide, it would not fit the display and be made smaller.
    setDefaultSize ("1300", "650");
    EXPECT_EQ (openingSize(), Size (1300, 650));
}

TEST_F (PluginEditorTest, IgnoresDefaultsThatAreNoSize)
{
    for (const auto* text : { "0", "-5", "", "wide" })
    {
        product.setEditorSize (-1, -1);
        setDefaultSize (text, text);
        EXPECT_EQ (openingSize(), Size (1050, 525)) << text;
    }
}

TEST_F (PluginEditorTest, OpensAtTheProjectsSizeBeforeAnyDefault)
{
    setDefaultSize ("800", "400");
    product.setEditorSize (600, 300);
    EXPECT_EQ (openingSize(), Size (600, 300));
}

TEST_F (PluginEditorTest, ReopensAtItsLastSize)
{
    EditorWindow (product)->setSize (700, 350);
    EXPECT_EQ (openingSize(), Size (700, 350));
}

TEST_F (PluginEditorTest, HostsResizeIsThisInstancesOwn)
{
    const EditorWindow editor (product);
    editor->setSize (640, 320);

    EXPECT_EQ (product.getEditorWidth(), 640);
    EXPECT_EQ (product.getEditorHeight(), 320);
    EXPECT_FALSE (settings().hasProperty ("defaultWidth"));
    EXPECT_FALSE (settings().hasProperty ("defaultHeight"));
}

TEST_F (PluginEditorTest, DraggedSizeBecomesTheDefault)
{
    {
        const EditorWindow editor (product);
        editor->setSize (600, 300);
        editor.dragCorner ({ 100, 50 });

        EXPECT_EQ (Size (editor->getWidth(), editor->getHeight()), Size (700, 350));
        EXPECT_EQ (product.getEditorWidth(), 700);
        EXPECT_EQ (settings()["defaultWidth"].toString(), "700");
        EXPECT_EQ (settings()["defaultHeight"].toString(), "350");
    }

    TestProduct another (sandbox.getLocations());
    const EditorWindow editor (another);
    EXPECT_EQ (Size (editor->getWidth(), editor->getHeight()), Size (700, 350));
}

TEST_F (PluginEditorTest, DraggingKeepsTheAspectRatioAndTheLimits)
{
    const EditorWindow editor (product);
    editor->setSize (600, 300);
    editor.dragCorner ({ 100, 0 });
    EXPECT_EQ (editor->getWidth(), 2 * editor->getHeight());

    editor.dragCorner ({ -2000, -2000 });
    EXPECT_GE (editor->getHeight(), 100);
    EXPECT_EQ (editor->getWidth(), 2 * editor->getHeight());

    editor.dragCorner ({ 3000, 3000 });
    EXPECT_LE (editor->getWidth(), 1600);
    EXPECT_LE (editor->getHeight(), 1200 - 90);
}

TEST_F (PluginEditorTest, DraggingLeaves90PixelsOfTheDisplaysHeight)
{
    product.editorAspectRatio = 0.5;
    const EditorWindow editor (product);
    editor->setSize (300, 600);
    editor.dragCorner ({ 3000, 3000 });
    EXPECT_EQ (Size (editor->getWidth(), editor->getHeight()), Size (555, 1110));
}

TEST_F (PluginEditorTest, TooWideForTheDisplayIsMadeToFit)
{
    const EditorWindow editor (product);
    editor->setSize (3000, 1000);
    EXPECT_EQ (Size (editor->getWidth(), editor->getHeight()), Size (1590, 795));
    EXPECT_EQ (product.getEditorWidth(), 1590);
}

TEST_F (PluginEditorTest, TooHighForTheDisplayIsMadeToFit)
{
    product.editorAspectRatio = 0.5;
    const EditorWindow editor (product);
    editor->setSize (1000, 1500);
    EXPECT_EQ (Size (editor->getWidth(), editor->getHeight()), Size (550, 1100));
}

TEST_F (PluginEditorTest, DisplaySmallerThanTheProjectsSize)
{
    const FakeDisplays small ({ 1.0 }, { 800, 600 });
    product.setEditorSize (1600, 800);
    EXPECT_EQ (openingSize(), Size (790, 395));
}

TEST_F (PluginEditorTest, CornerIsAProportionOfTheHeight)
{
    const EditorWindow editor (product);
    editor->setSize (800, 400);
    EXPECT_EQ (editor->getResizerSize(), 20);
    EXPECT_EQ (editor.find<juce::ResizableCornerComponent>()->getBounds(), juce::Rectangle<int> (780, 380, 20, 20));
    EXPECT_TRUE (editor.find<juce::ResizableCornerComponent>()->isAlwaysOnTop());
    EXPECT_TRUE (editor->isResizable());
}

TEST_F (PluginEditorTest, CornerIsRoundedToWholePixels)
{
    const EditorWindow editor (product);
    editor->setSize (716, 358); // a corner of 17.9
    EXPECT_EQ (editor->getResizerSize(), 18);
    EXPECT_EQ (editor.find<juce::ResizableCornerComponent>()->getBounds(), juce::Rectangle<int> (698, 340, 18, 18));
}

TEST_F (PluginEditorTest, TellsTheLookOfItsSize)
{
    const EditorWindow editor (product);
    editor->setSize (800, 400);
    const auto& look = dynamic_cast<LookAndFeel&> (editor->getLookAndFeel());
    EXPECT_EQ (look.editorWidth, 800);
    EXPECT_EQ (look.editorHeight, 400);
}

TEST_F (PluginEditorTest, EditorsShareTheLookUntilTheLastCloses)
{
    const auto isOurs = []
    { return dynamic_cast<LookAndFeel*> (&juce::LookAndFeel::getDefaultLookAndFeel()) != nullptr; };

    TestProduct another (sandbox.getLocations());
    ASSERT_FALSE (isOurs());

    for (const auto firstClosesFirst : { true, false })
    {
        auto first = std::make_unique<EditorWindow> (product);
        auto second = std::make_unique<EditorWindow> (another);
        EXPECT_TRUE (isOurs());
        EXPECT_EQ (&(*first)->getLookAndFeel(), &(*second)->getLookAndFeel());

        (firstClosesFirst ? first : second).reset();
        EXPECT_TRUE (isOurs());
        (firstClosesFirst ? second : first).reset();
        EXPECT_FALSE (isOurs());
    }
}

TEST_F (PluginEditorTest, FindsTheParameterThatAComponentStandsFor)
{
    const EditorWindow editor (product);
    juce::Component component;

    EXPECT_EQ (editor->getControlParameterIndex (component), -1);
    component.setComponentID ("nothing");
    EXPECT_EQ (editor->getControlParameterIndex (component), -1);
    component.setComponentID ("level");
    EXPECT_EQ (editor->getControlParameterIndex (component), 0);
    component.setComponentID ("time");
    EXPECT_EQ (editor->getControlParameterIndex (component), 1);
}

/** A menu that is open, as a control of the editor would open it. */
void openMenu (PluginEditor& editor)
{
    juce::PopupMenu menu;
    menu.addItem (1, "item");
    menu.showMenuAsync (juce::PopupMenu::Options().withTargetComponent (&editor).withParentComponent (&editor));
    ASSERT_TRUE (
        runMessageLoopUntil ([] { return juce::ModalComponentManager::getInstance()->getNumModalComponents() > 0; }));
}

bool menuGoes()
{
    return runMessageLoopUntil ([]
                                { return juce::ModalComponentManager::getInstance()->getNumModalComponents() == 0; });
}

TEST_F (PluginEditorTest, MenusCloseWhenTheWindowMovesOrLosesTheForeground)
{
    const EditorWindow editor (product);
    PluginMoveDetector detector (*editor);

    // What the editor's own detector sees first in the foreground is news to it. It looks when the window comes to the
    // front.
    editor->toFront (true);
    ASSERT_TRUE (runMessageLoopUntil ([] { return juce::Process::isForegroundProcess(); }));
    editor->toFront (true);

    openMenu (*editor);
    editor->hostFocusChanged (detector, false);
    editor->pluginDensityChanged (detector, true);
    runMessageLoopFor (20);
    EXPECT_EQ (juce::ModalComponentManager::getInstance()->getNumModalComponents(), 1);

    editor->hostFocusChanged (detector, true);
    EXPECT_TRUE (menuGoes());

    openMenu (*editor);
    editor->pluginMoved (detector);
    EXPECT_TRUE (menuGoes());

    openMenu (*editor);
    editor->focusLost (juce::Component::focusChangedDirectly);
    EXPECT_TRUE (menuGoes());

    openMenu (*editor);
    editor->setSize (400, 200);
    EXPECT_TRUE (menuGoes());
}

TEST_F (PluginEditorTest, ClosesWhileAMenuIsOpen)
{
    {
        const EditorWindow editor (product);
        openMenu (*editor);
    }

    EXPECT_TRUE (menuGoes());
}

/** The memory that this process has in use, in bytes, without what it has freed and the C library still keeps. */
juce::int64 getResidentBytes()
{
    malloc_trim (0);

    juce::int64 total = 0;
    juce::int64 resident = 0;
    std::ifstream ("/proc/self/statm") >> total >> resident;
    return resident * sysconf (_SC_PAGESIZE);
}

TEST_F (PluginEditorTest, OpensAndClosesTwoHundredTimesWithoutGrowth)
{
    // JUCE keeps glyphs by the typeface that they were drawn with, some of each that has gone.
    const auto fonts = CvFonts::getShared();
    const auto openAndClose = [this]
    {
        const EditorWindow editor (product);
        runMessageLoopFor (1);
    };
    // What is still on its way to editors that are gone counts for nothing, however much of it a busy machine leaves.
    const auto getSettledBytes = []
    {
        runMessageLoopFor (500);
        return getResidentBytes();
    };

    for (auto i = 0; i < 50; ++i)
        openAndClose();

    const auto before = getSettledBytes();

    for (auto i = 0; i < 200; ++i)
        openAndClose();

#if ! defined(__SANITIZE_ADDRESS__) && ! defined(__SANITIZE_THREAD__)
    EXPECT_LT (getSettledBytes() - before, 2 * 1024 * 1024);
#else
    juce::ignoreUnused (before);
#endif
}

/** An editor that notes who tells it of its moves. */
class WatchedEditor final : public PluginEditor
{
public:
    explicit WatchedEditor (TestProduct& product) : PluginEditor (product) {}

    SizeLimits getEditorSizeLimits() const override { return { 100, 100, 10000, 10000 }; }

    double getEditorAspectRatio() const override { return 2.0; }

    void pluginMoved (PluginMoveDetector& source) override { detector = &source; }

    PluginMoveDetector* detector = nullptr;
};

TEST_F (PluginEditorTest, LooksForMovesEvery59Milliseconds)
{
    WatchedEditor editor (product);
    editor.open();
    editor.setWantsKeyboardFocus (true);
    editor.addToDesktop (0);
    editor.setTopLeftPosition (30, 40);
    editor.setVisible (true);
    editor.toFront (true);

    ASSERT_TRUE (runMessageLoopUntil ([&] { return editor.detector != nullptr; }));
    EXPECT_TRUE (editor.detector->isTimerRunning());
    EXPECT_EQ (editor.detector->getTimerInterval(), 59);
}
} // namespace
} // namespace cv::pluginCore
