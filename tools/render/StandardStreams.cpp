#include "StandardStreams.h"

#include "RenderError.h"

#include <fcntl.h>
#include <iostream>
#include <unistd.h>

namespace cv::render
{
void keepStandardPlaces()
{
    // A new file gets the lowest place that is free. What is only open for reading refuses what is printed there.
    for (auto place = STDIN_FILENO; place <= STDERR_FILENO; ++place)
        if (fcntl (place, F_GETFD) < 0 && open ("/dev/null", O_RDONLY) < 0)
            break;
}

void throwIfOutputWasLost()
{
    std::cout.flush();

    if (! std::cout)
        throw RenderError ("can't write to the standard output");
}
} // namespace cv::render
