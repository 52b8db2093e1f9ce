#include "support/AudioThreadWatch.h"

#include <malloc.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>

// The C library lets a program bring its own malloc, which all shared libraries then use as well, and
// operator new and delete in all their forms are made of it. Ours notes the call and goes on to the
// library's. A sanitizer brings its own already and calls a hook instead.

#if defined(__has_feature)
    #if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
        #define VARLO_HEAP_IS_A_SANITIZERS 1
    #endif
#endif

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    #define VARLO_HEAP_IS_A_SANITIZERS 1
#endif

namespace
{
using cv::test::AudioThreadWatch;
using Kind = cv::test::AudioThreadCall::Kind;

void* noteAllocation (const char* function, void* memory, std::size_t numBytes) noexcept
{
    AudioThreadWatch::note (Kind::allocation, function, memory, numBytes);
    return memory;
}

void noteRelease (const char* function, const volatile void* memory) noexcept
{
    if (memory != nullptr)
        AudioThreadWatch::note (Kind::release, function, const_cast<const void*> (memory), 0);
}
} // namespace

#if VARLO_HEAP_IS_A_SANITIZERS

extern "C" int __sanitizer_install_malloc_and_free_hooks (void (*) (const volatile void*, std::size_t),
                                                          void (*) (const volatile void*));

namespace
{
[[maybe_unused]] const int installed =
    __sanitizer_install_malloc_and_free_hooks ([] (const volatile void* memory, std::size_t numBytes)
                                               { noteAllocation ("allocation", const_cast<void*> (memory), numBytes); },
                                               [] (const volatile void* memory) { noteRelease ("release", memory); });
} // namespace

#else

    #pragma GCC visibility push(default)

extern "C"
{
    void* __libc_malloc (std::size_t);
    void* __libc_calloc (std::size_t, std::size_t);
    void* __libc_realloc (void*, std::size_t);
    void __libc_free (void*);
    void* __libc_memalign (std::size_t, std::size_t);
    void* __libc_valloc (std::size_t);
    void* __libc_pvalloc (std::size_t);

    void* malloc (std::size_t size) noexcept
    {
        return noteAllocation ("malloc", __libc_malloc (size), size);
    }

    void* calloc (std::size_t count, std::size_t size) noexcept
    {
        return noteAllocation ("calloc", __libc_calloc (count, size), count * size);
    }

    void* realloc (void* memory, std::size_t size) noexcept
    {
        return noteAllocation ("realloc", __libc_realloc (memory, size), size);
    }

    void* reallocarray (void* memory, std::size_t count, std::size_t size) noexcept
    {
        std::size_t total = 0;

        if (__builtin_mul_overflow (count, size, &total))
        {
            errno = ENOMEM;
            return nullptr;
        }

        return noteAllocation ("reallocarray", __libc_realloc (memory, total), total);
    }

    void free (void* memory) noexcept
    {
        noteRelease ("free", memory);
        __libc_free (memory);
    }

    void* memalign (std::size_t alignment, std::size_t size) noexcept
    {
        return noteAllocation ("memalign", __libc_memalign (alignment, size), size);
    }

    void* aligned_alloc (std::size_t alignment, std::size_t size) noexcept
    {
        return noteAllocation ("aligned_alloc", __libc_memalign (alignment, size), size);
    }

    int posix_memalign (void** memory, std::size_t alignment, std::size_t size) noexcept
    {
        if (alignment == 0 || (alignment & (alignment - 1)) != 0 || alignment % sizeof (void*) != 0)
            return EINVAL;

        auto* allocated = noteAllocation ("posix_memalign", __libc_memalign (alignment, size), size);

        if (allocated == nullptr)
            return ENOMEM;

        *memory = allocated;
        return 0;
    }

    void* valloc (std::size_t size) noexcept
    {
        return noteAllocation ("valloc", __libc_valloc (size), size);
    }

    void* pvalloc (std::size_t size) noexcept
    {
        return noteAllocation ("pvalloc", __libc_pvalloc (size), size);
    }
}

    #pragma GCC visibility pop

#endif
