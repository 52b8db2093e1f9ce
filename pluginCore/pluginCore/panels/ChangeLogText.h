#pragma once

#include <juce_graphics/juce_graphics.h>

namespace cv::pluginCore
{
/** What of a change log is shown in that font: what the text shaper can be trusted with (getShapeableText), and
    of this no more than can be laid out, again for each new size, while nobody notices. Where that isn't all, an
    ellipsis stands below it. Spaces go into very long words. Empty if nothing is left to show.
    Message thread.
*/
juce::String getShownChangeLog (const juce::String&, const juce::Font&);
} // namespace cv::pluginCore
