#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::pluginCore
{
/** Has JUCE look where a window stands on the screen. It keeps what the system has told it, and on Linux a window
    that is embedded in its host's isn't told when that one moves; JUCE would find it out when the mouse next enters
    or leaves a button. Elsewhere JUCE asks each time, and this does nothing. Message thread.
*/
void updateWindowPosition (juce::ComponentPeer&);
} // namespace cv::pluginCore
