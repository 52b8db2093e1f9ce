#include "support/AudioThreadGuard.h"

#include <gtest/gtest.h>

namespace cv::test
{
AudioThreadGuard::AudioThreadGuard (Accepts acceptsCall) : accepts (std::move (acceptsCall)) {}

AudioThreadGuard::~AudioThreadGuard()
{
    watch.stop();

    for (const auto& call : watch.getCalls())
        if (! accepts || ! accepts (call))
            ADD_FAILURE() << "on the audio thread: " << call.describe();

    if (watch.getNumCalls() > AudioThreadWatch::maxCalls)
        ADD_FAILURE() << "on the audio thread: " << watch.getNumCalls() << " calls in all";
}
} // namespace cv::test
