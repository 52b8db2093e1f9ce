#include "varlo/dsp/DelayMemory.h"

#include <algorithm>
#include <array>

namespace cv::varlo
{
namespace
{
constexpr std::array<Frame, maxPartLength> silentFrames {};
}

void DelayMemory::prepare (int maxDelay)
{
    clear();
    frames.resize (std::max<size_t> (4, (size_t) maxDelay + spareFrames));
}

void DelayMemory::clear() noexcept
{
    position = 0;
    numWritten = 0;
}

void DelayMemory::finishWrite (int numFrames) noexcept
{
    const auto size = (int) frames.size();
    position = (position + numFrames) % size;
    numWritten = std::min (numWritten + numFrames, size);
}

DelayMemory::Run DelayMemory::read (int delay, int maxLength) const noexcept
{
    const auto length = std::min (maxLength, delay + 1);

    if (delay > numWritten)
        return { silentFrames.data(), std::min ({ length, delay - numWritten, maxPartLength }) };

    const auto size = (int) frames.size();
    const auto start = position >= delay ? position - delay : position - delay + size;
    return { frames.data() + start, std::min (length, size - start) };
}
} // namespace cv::varlo
