#pragma once

#include <juce_core/juce_core.h>

namespace cv::pluginCore
{
/** Reads what juce::AudioProcessor::copyXmlToBinary() writes, from a source that may hold anything: the
    bytes "VC2!", the text's length as 32 bits with the lowest byte first, the text in UTF-8, a zero.

    A text that is shorter than its length says is taken as far as it goes, bytes behind it are not looked
    at. Null for anything else, for a text without an element and for one that JUCE's reader can't be
    given (see parseXmlText()). Any thread but the audio thread.
*/
std::unique_ptr<juce::XmlElement> parseStateChunk (const void* data, int sizeInBytes);
} // namespace cv::pluginCore
