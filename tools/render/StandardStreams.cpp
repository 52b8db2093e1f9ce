#include "StandardStreams.h"

#include "RenderError.h"

#include <iostream>

namespace cv::render
{
void throwIfOutputWasLost()
{
    std::cout.flush();

    if (! std::cout)
        throw RenderError ("can't write to the standard output");
}
} // namespace cv::render
