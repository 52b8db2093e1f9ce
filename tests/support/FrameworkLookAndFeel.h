#pragma once

#include "pluginCore/lookAndFeel/ColourIds.h"

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::test
{
/** The default look-and-feel for as long as it lives: JUCE's, with colours for the framework's strips. Components
    have to go before it does.
*/
class FrameworkLookAndFeel : public juce::LookAndFeel_V4
{
public:
    FrameworkLookAndFeel()
    {
        setColour (pluginCore::headerBackgroundColourId, headerBackground);
        setColour (pluginCore::presetsBarBackgroundColourId, presetsBarBackground);
        setDefaultLookAndFeel (this);
    }

    ~FrameworkLookAndFeel() override { setDefaultLookAndFeel (nullptr); }

    static inline const juce::Colour headerBackground { 0xff112233 };
    static inline const juce::Colour presetsBarBackground { 0xffddeecc };
};
} // namespace cv::test
