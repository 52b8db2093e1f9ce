#pragma once

#include <juce_core/juce_core.h>

namespace cv::pluginCore
{
/** What may be shown of a text that somebody else has written: a server, or who named a file.

    JUCE's text shaper breaks lines within groups of characters that it has made one glyph of before, and reads
    beyond its memory then; it does so too where a character ends a paragraph but no line; and in lines that run
    from right to left it looks for glyphs before the first. So what is let through are characters that stand for
    themselves and run from left to right, which is what people write in the Latin, Greek, Cyrillic, Armenian,
    Georgian, Chinese, Japanese and Korean scripts, with punctuation, symbols and emoji, and line feeds. A fuzzer
    finds nothing with these. Not let through:

    - what joins its neighbour: combining marks, variation selectors, joiners, skin tones, the letters of flags,
      parts of Korean syllables. It is left out, and its neighbour stands without it;
    - what isn't seen: controls, marks of direction, soft hyphens. It is left out too, but a tabulator and any
      kind of space become a space, and any end of a line a line feed;
    - all else, the Hebrew and Arabic scripts and those that can't be written without marks among it. A question
      mark stands for each character.

    Any thread; takes time in proportion to the text's length.
*/
juce::String getShapeableText (const juce::String&);

/** The same for one line, a name: line feeds become spaces too, and where nothing is let through a question mark
    stands for the whole. Any thread.
*/
juce::String getShapeableLine (const juce::String&);
} // namespace cv::pluginCore
