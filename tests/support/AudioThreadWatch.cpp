#include "support/AudioThreadWatch.h"

#include <pthread.h>

#include <cstddef>

namespace cv::test
{
namespace
{
thread_local bool watching = false;
thread_local int allocations = 0;
thread_local int locks = 0;

void noteAllocation() noexcept
{
    if (watching)
        ++allocations;
}
} // namespace

AudioThreadWatch::AudioThreadWatch() noexcept
{
    allocations = 0;
    locks = 0;
    watching = true;
}

AudioThreadWatch::~AudioThreadWatch() noexcept
{
    watching = false;
}

int AudioThreadWatch::numAllocations() const noexcept
{
    return allocations;
}

int AudioThreadWatch::numLocks() const noexcept
{
    return locks;
}

// The linker's --wrap sends every call of NAME to __wrap_NAME and __real_NAME to the original.
extern "C"
{
    void* __real_malloc (std::size_t);
    void* __real_calloc (std::size_t, std::size_t);
    void* __real_realloc (void*, std::size_t);
    void __real_free (void*);
    void* __real__Znwm (std::size_t);
    void __real__ZdlPv (void*);
    void __real__ZdlPvm (void*, std::size_t);
    int __real_pthread_mutex_lock (pthread_mutex_t*);

    void* __wrap_malloc (std::size_t size)
    {
        noteAllocation();
        return __real_malloc (size);
    }

    void* __wrap_calloc (std::size_t count, std::size_t size)
    {
        noteAllocation();
        return __real_calloc (count, size);
    }

    void* __wrap_realloc (void* memory, std::size_t size)
    {
        noteAllocation();
        return __real_realloc (memory, size);
    }

    void __wrap_free (void* memory)
    {
        noteAllocation();
        __real_free (memory);
    }

    void* __wrap__Znwm (std::size_t size)
    {
        noteAllocation();
        return __real__Znwm (size);
    }

    void __wrap__ZdlPv (void* memory)
    {
        noteAllocation();
        __real__ZdlPv (memory);
    }

    void __wrap__ZdlPvm (void* memory, std::size_t size)
    {
        noteAllocation();
        __real__ZdlPvm (memory, size);
    }

    int __wrap_pthread_mutex_lock (pthread_mutex_t* mutex)
    {
        if (watching)
            ++locks;

        return __real_pthread_mutex_lock (mutex);
    }
}
} // namespace cv::test
