#include "InputFileStream.h"

namespace cv::render
{
void InputFileStream::correct (std::vector<SizeCorrection> sizes)
{
    corrections = std::move (sizes);
}

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
    const auto start = file.getPosition();
    const auto result = file.read (destination, numBytes);
    shortRead |= result < numBytes;

    for (const auto& correction : corrections)
    {
        for (auto i = 0; i < (int) sizeof (correction.size); ++i)
        {
            const auto offset = correction.position + i - start;

            if (offset >= 0 && offset < result)
                static_cast<juce::uint8*> (destination)[offset] = (juce::uint8) (correction.size >> (8 * i));
        }
    }

    return result;
}
} // namespace cv::render
