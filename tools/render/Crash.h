#pragma once

#include <juce_core/juce_core.h>

namespace cv::render
{
/** From here on a crash ends the program with one line on stderr and the exit code of a failure, and files that
    deleteOnCrash() names go with it. Call once, before the plug-in is loaded: this program's own code that runs
    beside it is taken for it. Message thread. Where there is no POSIX these three do nothing.
*/
void installCrashHandlers();

/** At most four files at a time; a path that is longer than the system takes is left out. One thread. */
void deleteOnCrash (const juce::File&);

void keepOnCrash (const juce::File&);
} // namespace cv::render
