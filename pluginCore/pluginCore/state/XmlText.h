#pragma once

#include <juce_core/juce_core.h>

namespace cv::pluginCore
{
/** Parses XML that may come from anywhere: a preset of a stranger's, a damaged project.

    juce::XmlDocument does the work, on texts that can't harm it; findReadableXml() says which those are. What
    JUCE writes is always among them, whatever characters it holds. Null where no element results. Any thread
    but the audio thread.
*/
std::unique_ptr<juce::XmlElement> parseXmlText (const juce::String&);

/** The same for a file in UTF-8 or, with a byte-order mark, UTF-16. Null where it can't be read or has more than
    8 MiB.
*/
std::unique_ptr<juce::XmlElement> parseXmlFile (const juce::File&);

/** Writes an element as JUCE does, wrapped at 60 characters, with replaceFile(); false if that fails, and what
    the file held is still whole then.
*/
bool writeXmlFile (const juce::XmlElement&, const juce::File&);

/** The first direct child of exactly this name, or null. JUCE's own search takes names that differ in
    case for equal.
*/
const juce::XmlElement* findChildElement (const juce::XmlElement& parent, juce::StringRef name);
} // namespace cv::pluginCore
