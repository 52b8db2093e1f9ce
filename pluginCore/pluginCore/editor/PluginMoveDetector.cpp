#include "pluginCore/editor/PluginMoveDetector.h"

#include "pluginCore/editor/WindowPosition.h"

namespace cv::pluginCore
{
PluginMoveDetector::PluginMoveDetector (juce::Component& componentToWatch, std::function<bool()> isForeground)
    : isForegroundProcess (std::move (isForeground))
    , watchedComponent (&componentToWatch)
{
}

PluginMoveDetector::~PluginMoveDetector()
{
    stopTimer();
}

void PluginMoveDetector::addListener (Listener* listener)
{
    JUCE_ASSERT_MESSAGE_THREAD
    listeners.add (listener);
}

void PluginMoveDetector::removeListener (Listener* listener)
{
    JUCE_ASSERT_MESSAGE_THREAD
    listeners.remove (listener);
}

void PluginMoveDetector::timerCallback()
{
    updateForeground();

    if (wasForeground && updatePosition())
        updateDensity();
}

bool PluginMoveDetector::isHiDpiScale (double displayScale) noexcept
{
    return displayScale > 1.0 && juce::exactlyEqual (std::fmod (displayScale, 2.0), 0.0);
}

void PluginMoveDetector::updateForeground()
{
    const auto isForeground = isForegroundProcess != nullptr && isForegroundProcess();

    if (std::exchange (wasForeground, isForeground) != isForeground)
        listeners.call ([this, isForeground] (Listener& listener)
                        { listener.hostFocusChanged (*this, ! isForeground); });
}

/** True when the window has moved. */
bool PluginMoveDetector::updatePosition()
{
    if (topLevelComponent == nullptr && watchedComponent != nullptr)
        topLevelComponent = watchedComponent->getTopLevelComponent();

    auto* const peer = topLevelComponent != nullptr ? topLevelComponent->getPeer() : nullptr;

    if (peer == nullptr)
        return false;

    updateWindowPosition (*peer);
    const auto position = peer->localToGlobal (juce::Point<float>());

    if (std::exchange (lastScreenPosition, position) == position)
        return false;

    listeners.call ([this] (Listener& listener) { listener.pluginMoved (*this); });
    return true;
}

void PluginMoveDetector::updateDensity()
{
    // A listener may have deleted the component.
    const auto* const display =
        watchedComponent != nullptr
            ? juce::Desktop::getInstance().getDisplays().getDisplayForRect (watchedComponent->getScreenBounds())
            : nullptr;
    const auto isNowHiDpi = display != nullptr && isHiDpiScale (display->scale);

    if (std::exchange (isHiDpi, isNowHiDpi) != isNowHiDpi)
        listeners.call ([this, isNowHiDpi] (Listener& listener) { listener.pluginDensityChanged (*this, isNowHiDpi); });
}
} // namespace cv::pluginCore
