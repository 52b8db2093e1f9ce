#pragma once

namespace cv::render
{
/** Takes the places of standard streams that whoever started the program has closed: the next file to be opened
    would get the place of stdout, and what is printed would go into it. Call first.
*/
void keepStandardPlaces();

/** Throws RenderError when something that was printed to stdout has not arrived: a full disk, a closed pipe. */
void throwIfOutputWasLost();
} // namespace cv::render
