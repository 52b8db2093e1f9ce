// The X server's types, for JUCE's own access to it.
#define JUCE_GUI_BASICS_INCLUDE_XHEADERS 1

#include "pluginCore/editor/WindowPosition.h"

#include <cstdint>

namespace cv::pluginCore
{
void updateWindowPosition ([[maybe_unused]] juce::ComponentPeer& peer)
{
#if JUCE_LINUX || JUCE_BSD
    const auto window = (::Window) reinterpret_cast<std::uintptr_t> (peer.getNativeHandle());

    // Any parent makes JUCE note where the window's parent is: one place for all that are embedded. A window of its
    // own doesn't look there.
    constexpr ::Window anyParent = 1;
    juce::XWindowSystem::getInstance()->getWindowBounds (window, anyParent);
#endif
}
} // namespace cv::pluginCore
