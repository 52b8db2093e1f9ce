#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::test
{
/** A window as a host makes it, with an editor's in it: of another connection to the display, so JUCE hears
    nothing of what becomes of it. No window manager touches it. Linux, message thread.
*/
class HostWindow
{
public:
    /** Connects to the display and shows a window there, or leaves isOpen() false. */
    explicit HostWindow (juce::Rectangle<int> bounds);
    ~HostWindow();

    bool isOpen() const noexcept { return display != nullptr; }

    /** What a component is put into with addToDesktop(). */
    void* getHandle() const noexcept;

    /** True once a window that lies in this one can be seen, and so can be clicked. */
    bool showsAnother() const;

    /** In pixels of the screen. */
    void moveTo (juce::Point<int> topLeft) const;

    /** Has the keyboard's keys go to this window, as a window manager does for the one that is worked in. */
    void takeFocus() const;

private:
    void* display = nullptr;
    unsigned long window = 0;

    JUCE_DECLARE_NON_COPYABLE (HostWindow)
};
} // namespace cv::test
