#pragma once

#include "DisplayConnection.h"
#include "EditorFrame.h"

#include <optional>

namespace cv::render
{
/** The plug-in's editor on the screen, while sound is played. Message thread. */
class EditorWindow
{
public:
    /** Opens the editor and waits until it shows. The plug-in brings a size, in pixels, to what it allows; none
        is the one that it opens at. Throws RenderError when it has no editor or the screen is too small. The
        plug-in and the connection outlive this object.
    */
    EditorWindow (const DisplayConnection&, juce::AudioPluginInstance&, std::optional<juce::Point<int>> size);

    /** Closes the editor, and lets the plug-in take what closing it has set going, as it can in a host that goes on. */
    ~EditorWindow();

    /** Lets the editor go on for as long as so many seconds of sound last, so that it sees the sound as it is
        played. To be called after each block.
    */
    void letRun (double seconds);

    /** What the editor shows, once it has drawn all that it was told. Throws RenderError when it doesn't lie on
        the screen with all of its area.
    */
    juce::Image capture();

private:
    void waitUntilItShows() const;

    const DisplayConnection& display;
    std::optional<EditorFrame> frame;
    double secondsToRun = 0.0;

    JUCE_DECLARE_NON_COPYABLE (EditorWindow)
};
} // namespace cv::render
