#pragma once

#include <juce_data_structures/juce_data_structures.h>

namespace cv::pluginCore
{
/** Whether juce::PropertiesFile can be given this file: it isn't there, or it holds XML in UTF-8 that does JUCE's
    reader no harm (see parseXmlText()). JUCE would also unpack its own binary formats, to any size. Message
    thread, or the one that makes the first plug-in.
*/
bool isReadableSettingsFile (const juce::File&);

/** Takes out what saving would have JUCE parse and its reader is not to be given: for each value that looks like
    XML juce::PropertiesFile does that. The value named is left alone, it is replaced before it is saved.
*/
void removeUnreadableValues (juce::PropertiesFile&, juce::StringRef replacedValue);
} // namespace cv::pluginCore
