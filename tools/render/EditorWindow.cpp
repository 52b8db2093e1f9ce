#include "EditorWindow.h"

#include "Interruption.h"
#include "RenderError.h"

namespace cv::render
{
namespace
{
void runMessageLoopFor (double milliseconds)
{
    juce::MessageManager::getInstance()->runDispatchLoopUntil ((int) std::ceil (milliseconds));
}
} // namespace

EditorWindow::EditorWindow (const DisplayConnection& displayToUse,
                            juce::AudioPluginInstance& plugin,
                            std::optional<juce::Point<int>> size)
    : display (displayToUse)
    , frame (std::in_place, plugin)
{
    frame->show();

    if (size)
        frame->setEditorSize (*size);

    waitUntilItShows();
}

EditorWindow::~EditorWindow()
{
    // A plug-in made with JUCE hands its messages to a thread of its own again now. One that is unloaded before that
    // thread had its turn destroys objects that still wait for theirs.
    constexpr auto partingMilliseconds = 100.0;

    frame.reset();
    runMessageLoopFor (partingMilliseconds);
}

void EditorWindow::waitUntilItShows() const
{
    // This program's window, in it the one that JUCE embeds others in, in it the plug-in's.
    constexpr auto numWindows = 3;
    constexpr auto turnMilliseconds = 20.0;
    constexpr auto limitMilliseconds = 20000.0;

    for (auto waited = 0.0; display.countVisibleLevels (frame->getWindowHandle()) < numWindows;
         waited += turnMilliseconds)
    {
        throwIfInterrupted();

        if (waited > limitMilliseconds)
            throw RenderError ("the plug-in's editor does not show");

        runMessageLoopFor (turnMilliseconds);
    }
}

void EditorWindow::letRun (double seconds)
{
    // Enough for timers of the editor's to come at least now and then when drawing takes all of the time.
    constexpr auto turnMilliseconds = 20.0;

    secondsToRun += seconds;

    if (secondsToRun * 1000.0 < turnMilliseconds)
        return;

    runMessageLoopFor (secondsToRun * 1000.0);
    secondsToRun = 0.0;
}

juce::Image EditorWindow::capture()
{
    // The analysis of the last block, the timers that fetch it, and the drawing.
    constexpr auto settlingMilliseconds = 300.0;

    frame->toFront (false);
    runMessageLoopFor (settlingMilliseconds);
    return display.capture (frame->getWindowHandle());
}
} // namespace cv::render
