#pragma once

#include <juce_core/juce_core.h>

namespace cv::varlo
{
/** docs/presets.md: tables whose rows begin with a preset's name. Those below the heading "Measured" hold figures, the
    ones above it the values of the parameters.
*/
class PresetDocument
{
public:
    /** Reads a document; one that can't be read is empty. */
    explicit PresetDocument (const juce::File&);

    /** The one in the tree. */
    static juce::File getFile();

    /** The presets that have a row of figures. */
    juce::StringArray getNames() const;

    /** Mix, Degrade, Delay, Feedback, Lowpass and Resonance, as the preset's row says; empty without a row. */
    juce::StringArray getValues (const juce::String& preset) const;

    /** What stands behind the name in the preset's row of figures: the peaks after each recording, the changes of
        loudness by each recording, the tail; empty without a row.
    */
    juce::StringArray getFigures (const juce::String& preset) const;

    /** Puts other figures into the preset's row; false without one. */
    bool setFigures (const juce::String& preset, const juce::StringArray& figures);

    juce::String getText() const { return lines.joinIntoString ("\n"); }

private:
    int findHeading() const;
    int findRow (const juce::String& preset, bool isOfFigures) const;

    juce::StringArray getCells (int line) const;

    juce::StringArray lines;
};
} // namespace cv::varlo
