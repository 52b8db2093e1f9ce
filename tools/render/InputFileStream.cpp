#include "InputFileStream.h"

namespace cv::render
{
void InputFileStream::startWatching() noexcept
{
    shortRead = false;
    askedBehindEnd = false;
}

bool InputFileStream::isExhausted()
{
    const auto result = file.isExhausted();
    askedBehindEnd |= result;
    return result;
}

int InputFileStream::read (void* destination, int numBytes)
{
    const auto result = file.read (destination, numBytes);
    shortRead |= result < numBytes;
    return result;
}
} // namespace cv::render
