#include "support/AudioThreadWatch.h"

#include <execinfo.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <utility>

namespace cv::test
{
namespace
{
thread_local AudioThreadWatch* current = nullptr;

/** Taking down the callers may itself use what is watched. */
thread_local bool noting = false;

void loadWhatBacktraceNeeds()
{
    std::array<void*, 1> callers {};
    backtrace (callers.data(), (int) callers.size());
}
} // namespace

std::string AudioThreadCall::describe() const
{
    std::ostringstream text;
    text << function;

    if (numBytes > 0)
        text << " of " << numBytes << " bytes";

    if (object != nullptr)
        text << " at " << object;

    if (auto** names = backtrace_symbols (callers.data(), numCallers))
    {
        for (int i = 0; i < numCallers; ++i)
            text << "\n    " << names[i];

        std::free (names);
    }

    return text.str();
}

AudioThreadWatch::AudioThreadWatch() noexcept : outer (current)
{
    loadWhatBacktraceNeeds();
    current = this;
}

void AudioThreadWatch::stop() noexcept
{
    if (std::exchange (watching, false))
        current = outer;
}

std::span<const AudioThreadCall> AudioThreadWatch::getCalls() const noexcept
{
    return { calls.data(), (std::size_t) std::min (numCalls, maxCalls) };
}

void AudioThreadWatch::note (AudioThreadCall::Kind kind,
                             const char* function,
                             const void* object,
                             std::size_t numBytes) noexcept
{
    if (current == nullptr || noting)
        return;

    noting = true;
    current->add (kind, function, object, numBytes);
    noting = false;
}

void AudioThreadWatch::add (AudioThreadCall::Kind kind,
                            const char* function,
                            const void* object,
                            std::size_t numBytes) noexcept
{
    if (numCalls < maxCalls)
    {
        auto& call = calls[(std::size_t) numCalls];
        call.kind = kind;
        call.function = function;
        call.object = object;
        call.numBytes = numBytes;
        call.numCallers = backtrace (call.callers.data(), (int) call.callers.size());
    }

    ++numCalls;
    numHeapCalls += kind == AudioThreadCall::Kind::wait ? 0 : 1;
}
} // namespace cv::test
