#pragma once

#include <juce_data_structures/juce_data_structures.h>

namespace cv::pluginCore
{
/** Makes `destination` equal to `source` by edits, so that the object and its listeners stay; what is equal
    already isn't touched. No undo.

    Children are paired by type and, within a type, by position. They keep the order in which they stand, new
    ones go to the end, so that the order across types may differ from the source's. A source that is no
    valid tree takes all properties and children away; a destination that is none stays so.
*/
void mergeTree (const juce::ValueTree& source, juce::ValueTree destination);
} // namespace cv::pluginCore
