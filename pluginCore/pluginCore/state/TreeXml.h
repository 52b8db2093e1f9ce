#pragma once

#include <juce_data_structures/juce_data_structures.h>

namespace cv::pluginCore
{
/** juce::ValueTree::fromXml() for elements of any origin. Leaves out what a tree never writes: text
    between elements, and binary properties whose stated size doesn't fit their text.
*/
juce::ValueTree treeFromXml (const juce::XmlElement&);
} // namespace cv::pluginCore
