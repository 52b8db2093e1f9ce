// A VST3 plug-in that crashes when it is asked what it holds, in the way that VARLO_CRASH names.

#include <cstdlib>
#include <string>
#include <thread>

namespace
{
void writeNowhere()
{
    volatile int* volatile nowhere = nullptr;
    *nowhere = 1;
}

/** Takes all of the stack: no program has room for so many calls. */
int recurse (int depth)
{
    constexpr auto tooDeep = 1000000000;
    volatile char room[4096];
    room[0] = (char) depth;
    return depth == tooDeep ? 0 : recurse (depth + 1) + room[0];
}

void crash (const std::string& kind)
{
    if (kind == "access")
        writeNowhere();
    else if (kind == "recursion")
        std::exit (recurse (0));
    else if (kind == "thread")
        std::thread (writeNowhere).join();
    else if (kind == "abort")
        std::abort();
    else if (kind == "exception")
        throw 1;
}
} // namespace

extern "C" __attribute__ ((visibility ("default"))) bool ModuleEntry (void*)
{
    return true;
}

extern "C" __attribute__ ((visibility ("default"))) bool ModuleExit()
{
    return true;
}

extern "C" __attribute__ ((visibility ("default"))) void* GetPluginFactory()
{
    const auto* const kind = std::getenv ("VARLO_CRASH");
    crash (kind != nullptr ? kind : "");
    return nullptr;
}
