#include "Interruption.h"

#include "RenderError.h"

#include <csignal>

namespace cv::render
{
namespace
{
volatile std::sig_atomic_t interrupted = 0;
}

void noteInterruption (int)
{
    interrupted = 1;
}

void throwIfInterrupted()
{
    if (interrupted != 0)
        throw RenderError ("interrupted; nothing was written", RenderError::interruptedExitCode);
}
} // namespace cv::render
