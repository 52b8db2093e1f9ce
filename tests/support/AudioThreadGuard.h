#pragma once

#include "support/AudioThreadWatch.h"

#include <functional>

namespace cv::test
{
/** Fails the running test for each call that the AudioThreadWatch sees on this thread while the guard
    lives, and tells where it came from.
*/
class AudioThreadGuard
{
public:
    /** Asked at the end, once for each call in their order, whether it is one to let pass. */
    using Accepts = std::function<bool (const AudioThreadCall&)>;

    AudioThreadGuard() = default;
    explicit AudioThreadGuard (Accepts);
    ~AudioThreadGuard();

    AudioThreadGuard (const AudioThreadGuard&) = delete;
    AudioThreadGuard& operator= (const AudioThreadGuard&) = delete;

private:
    const Accepts accepts;
    AudioThreadWatch watch; // last, so that nothing of this guard's own is seen
};
} // namespace cv::test
