#pragma once

#include <juce_gui_basics/juce_gui_basics.h>

namespace cv::pluginCore
{
/** Properties that a component sets to true to tell a look-and-feel about all that lies in it, at any depth. So the
    look doesn't have to know the component's class.
*/
namespace markers
{
/** Text buttons have the same font whatever their texts, so that all look alike. */
inline const juce::Identifier sameButtonFont { "sameButtonFont" };

/** Labels are written smaller. */
inline const juce::Identifier smallLabels { "smallLabels" };

/** Buttons are a presets bar's. */
inline const juce::Identifier presetsBar { "presetsBar" };
} // namespace markers

/** Properties that a component's own drawing follows. */
namespace properties
{
/** A label's, bool: the semibold font. */
inline const juce::Identifier bold { "bold" };

/** A label's, double: font height as a proportion of the label's, if above 0. */
inline const juce::Identifier fontScale { "fontScale" };

/** A slider's label's, bool: its text is turned, so the font's height follows the label's width. */
inline const juce::Identifier vertical { "vertical" };

/** Of a list of files, bool: no icons, and names further to the left. */
inline const juce::Identifier noFolderIcon { "noFolderIcon" };
} // namespace properties

/** Whether a component lies, at any depth, in one with this property. Message thread. */
inline bool liesInMarked (const juce::Component& component, const juce::Identifier& marker)
{
    for (const auto* parent = component.getParentComponent(); parent != nullptr; parent = parent->getParentComponent())
        if ((bool) parent->getProperties()[marker])
            return true;

    return false;
}
} // namespace cv::pluginCore
