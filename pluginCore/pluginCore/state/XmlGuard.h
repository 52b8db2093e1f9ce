#pragma once

#include <juce_core/juce_core.h>

namespace cv::pluginCore
{
/** What an XML text may not exceed before JUCE's reader gets it. A project of ours has hardly 1000 bytes, 10
    elements, 14 names, and 5 attributes in one element at most.
*/
namespace xmlLimits
{
/** 100 MB of empty elements took 34 s and 1.2 GB to restore; both grow with the text. */
inline constexpr int maxTextBytes = 8 * 1024 * 1024;

/** JUCE's reader, its trees and their destructors recurse once per level, on stacks that may be small. */
inline constexpr int maxDepth = 200;

/** Taking a child out of a tree moves all those behind it. */
inline constexpr int maxElements = 100000;

/** To set an attribute or a property, JUCE walks through all that the element has. */
inline constexpr int maxAttributesOfElement = 1000;

/** JUCE keeps all names of the process sorted in one array: a new one moves half of the others. */
inline constexpr int maxNames = 10000;
} // namespace xmlLimits

/** The shortest whole element, "<a/>". JUCE makes no string of less: it reads behind a lone byte-order mark. */
inline constexpr size_t minXmlBytes = 4;

/** Walks once through a text the way JUCE's XML reader will, without recursion and in linear time.

    Returns the part of it that the reader can be given: from the outermost element's "<" on. Empty where no
    element would result, and where reading would do harm: a document type, more than the limits above, a text
    behind a processing instruction (the reader never gets past it), a reference cut off by the end of the text
    (it reads beyond), an "&" without a ";" (it searches the whole rest for each), markup inside of an entity's
    name, a name that isn't one in XML (JUCE asserts that there are none). All else is the reader's to
    judge, character references to what is no character included, since JUCE's writer makes them.

    The text must be well-formed UTF-8. Any thread.
*/
juce::String findReadableXml (const juce::String&);

/** Whether JUCE's reader can also be given the first bytes alone, as it does to find out a file's outermost
    tag: its start tag must end within them. They must be well-formed UTF-8 as well.
*/
bool hasWholeStartTag (const juce::String& firstBytes);
} // namespace cv::pluginCore
