#pragma once

#include "pluginCore/sharing/SharedInstance.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::pluginCore
{
/** Keeps the one instance of a look-and-feel that all editors of a kind share, and that is JUCE's default for as
    long as one of them is open: menus and dialogs that an editor opens belong to no component of its own.

    Where several are alive the one that was made last is the default; the first to end takes JUCE back to its own.
    Message thread.
*/
template <typename LookAndFeelType>
class DefaultLookAndFeel
{
public:
    DefaultLookAndFeel() { juce::LookAndFeel::setDefaultLookAndFeel (&lookAndFeel); }

    ~DefaultLookAndFeel() { juce::LookAndFeel::setDefaultLookAndFeel (nullptr); }

    static std::shared_ptr<DefaultLookAndFeel> getShared() { return SharedInstance<DefaultLookAndFeel>::get(); }

private:
    LookAndFeelType lookAndFeel;

    JUCE_DECLARE_NON_COPYABLE (DefaultLookAndFeel)
};
} // namespace cv::pluginCore
