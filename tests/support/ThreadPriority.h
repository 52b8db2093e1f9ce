#pragma once

#include <juce_core/juce_core.h>

namespace cv::test
{
/** The priority with which a thread was started. On Linux JUCE only remembers it; elsewhere, and in builds with
    assertions, it may be asked on the thread itself alone, so there this tells nothing.
*/
inline std::optional<juce::Thread::Priority> getStartPriority (const juce::Thread& thread)
{
#if JUCE_LINUX && ! JUCE_DEBUG
    struct Access : juce::Thread
    {
        using Thread::getPriority;
    };

    return (thread.*&Access::getPriority)();
#else
    juce::ignoreUnused (thread);
    return {};
#endif
}
} // namespace cv::test
