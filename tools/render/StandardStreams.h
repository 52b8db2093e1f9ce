#pragma once

namespace cv::render
{
/** Takes the places of standard streams that whoever started the program has closed: the next file to be opened
    would get the place of stdout, and what is printed would go into it. Call first. Does nothing where there is no
    POSIX.
*/
void keepStandardPlaces();

/** Whether somebody reads stderr on a terminal; false where there is no POSIX to ask. */
bool isErrorStreamATerminal();

/** Throws RenderError when something that was printed to stdout has not arrived: a full disk, a closed pipe. */
void throwIfOutputWasLost();
} // namespace cv::render
