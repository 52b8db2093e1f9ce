#pragma once

#include <juce_core/juce_core.h>

#include <vector>

namespace cv::render
{
/** What a file's header should say, four bytes with the lowest first, instead of what it says. */
struct SizeCorrection
{
    juce::int64 position;
    juce::uint32 size;
};

/** A WAV file that was written as a stream has no sizes in its header, since its writer could not go back there: 0,
    or the largest number that there is. Its samples go on to its end then. Gives what the header should say;
    nothing for a file with sizes, or one of another kind. Throws RenderError when so much audio follows that no
    header could say it. Reads from the stream's start and leaves it anywhere.
*/
std::vector<SizeCorrection> findWavSizeCorrections (juce::InputStream&);
} // namespace cv::render
