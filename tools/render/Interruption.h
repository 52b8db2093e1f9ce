#pragma once

namespace cv::render
{
/** From here on SIGINT, SIGTERM and, on POSIX systems, SIGHUP only raise a flag, so that nothing half-written stays
    behind. One that whoever started the program has it ignore, as nohup does, stays ignored. Call once.
*/
void installSignalHandlers();

/** From here on a full disk or a closed pipe is an error of the write instead of the end of the process, which it
    only is on POSIX systems.
*/
void turnWriteSignalsIntoErrors();

/** Raises the flag: what installSignalHandlers() installs. */
void noteInterruption (int signal);

/** Throws RenderError when one of these signals has come. Any thread. */
void throwIfInterrupted();
} // namespace cv::render
