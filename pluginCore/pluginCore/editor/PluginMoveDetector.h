#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

#include <functional>

namespace cv::pluginCore
{
/** Watches the window that a component lies in, by polling: hosts don't tell a plug-in that its window
    has moved or that the application has lost the foreground, and open popup menus would stay behind.

    Once startTimer() is called, it looks at each tick. While the host is in the background it sees nothing
    else; a move made then is told when the host is back. Message thread only.
*/
class PluginMoveDetector final : public juce::Timer
{
public:
    /** A listener may remove itself in the call. Message thread. */
    class Listener
    {
    public:
        virtual ~Listener() = default;

        /** The window is somewhere else than at the tick before. The first tick counts too, unless the
            window stands at the screen's origin.
        */
        virtual void pluginMoved (PluginMoveDetector&) = 0;

        /** The host's process has left the foreground, or come there. */
        virtual void hostFocusChanged (PluginMoveDetector&, bool lostForeground) = 0;

        /** The window has been moved to a display with the other kind of pixels, see isHiDpiScale(). */
        virtual void pluginDensityChanged (PluginMoveDetector&, bool isHiDpi) = 0;
    };

    /** Watches the component, which may go before this does. `isForeground` tells whether the host's
        process is in the foreground.
    */
    explicit PluginMoveDetector (juce::Component& componentToWatch,
                                 std::function<bool()> isForeground = juce::Process::isForegroundProcess);

    ~PluginMoveDetector() override;

    void addListener (Listener*);
    void removeListener (Listener*);

    /** Looks once. The timer calls this. */
    void timerCallback() override;

    /** True for displays with an even number of pixels, two or more, to a logical pixel: 2 and 4, but
        neither 1.5 nor 3. Any thread.
    */
    static bool isHiDpiScale (double displayScale) noexcept;

private:
    void updateForeground();
    bool updatePosition();
    void updateDensity();

    const std::function<bool()> isForegroundProcess;
    juce::ListenerList<Listener> listeners;

    const juce::WeakReference<juce::Component> watchedComponent;
    juce::WeakReference<juce::Component> topLevelComponent;

    juce::Point<float> lastScreenPosition;
    bool wasForeground = false;
    bool isHiDpi = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (PluginMoveDetector)
};
} // namespace cv::pluginCore
