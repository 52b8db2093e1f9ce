#include "support/AudioThreadWatch.h"

#include <dlfcn.h>
#include <linux/futex.h>
#include <poll.h>
#include <pthread.h>
#include <sched.h>
#include <semaphore.h>
#include <sys/select.h>
#include <sys/syscall.h>
#include <time.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cstdarg>
#include <type_traits>

// The program's own functions come before the C library's, for all shared libraries too. Each of these
// notes the call and goes on to the one that it hides, be that the library's or that of a sanitizer in a
// shared library of its own, as GCC's are.

namespace
{
using cv::test::AudioThreadCall;
using cv::test::AudioThreadWatch;

/** The hidden function, looked up when it is first called: others come here before any constructor of
    ours has run.
*/
class Original
{
public:
    /** `version` is for functions that a library holds in an old form beside the current one. */
    constexpr explicit Original (const char* functionName, const char* functionVersion = nullptr) noexcept
        : name (functionName)
        , version (functionVersion)
    {
    }

    void note (const volatile void* object) const noexcept
    {
        AudioThreadWatch::note (AudioThreadCall::Kind::wait, name, const_cast<const void*> (object), 0);
    }

    /** Calls the function with these very types of arguments. */
    template <typename Result = int, typename... Arguments>
    Result call (Arguments... arguments)
    {
        return reinterpret_cast<Result (*) (Arguments...)> (get()) (arguments...);
    }

    /** Notes what the first argument points to, and calls. */
    template <typename First, typename... Rest>
    int noteAndCall (First first, Rest... rest)
    {
        if constexpr (std::is_pointer_v<First>)
            note (first);
        else
            note (nullptr);

        return call (first, rest...);
    }

private:
    void* get() noexcept
    {
        auto* found = function.load (std::memory_order_relaxed);

        if (found == nullptr)
        {
            found = version != nullptr ? dlvsym (RTLD_NEXT, name, version) : nullptr;

            if (found == nullptr)
                found = dlsym (RTLD_NEXT, name);

            function.store (found, std::memory_order_relaxed);
        }

        return found;
    }

    const char* const name;
    const char* const version;
    std::atomic<void*> function { nullptr };
};

/** Since when condition variables are what they are, on the one architecture that knows older ones. */
constexpr auto currentConditions = "GLIBC_2.3.2";

constexpr bool waits (long futexOperation) noexcept
{
    switch (futexOperation & FUTEX_CMD_MASK)
    {
        case FUTEX_WAIT:
        case FUTEX_WAIT_BITSET:
        case FUTEX_LOCK_PI:
        case FUTEX_WAIT_REQUEUE_PI:
            return true;

        default:
            return false;
    }
}
} // namespace

#pragma GCC visibility push(default)

extern "C"
{
    int pthread_mutex_lock (pthread_mutex_t* mutex) noexcept
    {
        static constinit Original original (__func__);
        return original.noteAndCall (mutex);
    }

    int pthread_mutex_timedlock (pthread_mutex_t* mutex, const timespec* time) noexcept
    {
        static constinit Original original (__func__);
        return original.noteAndCall (mutex, time);
    }

    int pthread_mutex_clocklock (pthread_mutex_t* mutex, clockid_t clock, const timespec* time) noexcept
    {
        static constinit Original original (__func__);
        return original.noteAndCall (mutex, clock, time);
    }

    int pthread_rwlock_rdlock (pthread_rwlock_t* lock) noexcept
    {
        static constinit Original original (__func__);
        return original.noteAndCall (lock);
    }

    int pthread_rwlock_wrlock (pthread_rwlock_t* lock) noexcept
    {
        static constinit Original original (__func__);
        return original.noteAndCall (lock);
    }

    int pthread_rwlock_timedrdlock (pthread_rwlock_t* lock, const timespec* time) noexcept
    {
        static constinit Original original (__func__);
        return original.noteAndCall (lock, time);
    }

    int pthread_rwlock_timedwrlock (pthread_rwlock_t* lock, const timespec* time) noexcept
    {
        static constinit Original original (__func__);
        return original.noteAndCall (lock, time);
    }

    int pthread_rwlock_clockrdlock (pthread_rwlock_t* lock, clockid_t clock, const timespec* time) noexcept
    {
        static constinit Original original (__func__);
        return original.noteAndCall (lock, clock, time);
    }

    int pthread_rwlock_clockwrlock (pthread_rwlock_t* lock, clockid_t clock, const timespec* time) noexcept
    {
        static constinit Original original (__func__);
        return original.noteAndCall (lock, clock, time);
    }

    int pthread_spin_lock (pthread_spinlock_t* lock) noexcept
    {
        static constinit Original original (__func__);
        return original.noteAndCall (lock);
    }

    int pthread_cond_wait (pthread_cond_t* condition, pthread_mutex_t* mutex)
    {
        static constinit Original original (__func__, currentConditions);
        return original.noteAndCall (condition, mutex);
    }

    int pthread_cond_timedwait (pthread_cond_t* condition, pthread_mutex_t* mutex, const timespec* time)
    {
        static constinit Original original (__func__, currentConditions);
        return original.noteAndCall (condition, mutex, time);
    }

    int pthread_cond_clockwait (pthread_cond_t* condition,
                                pthread_mutex_t* mutex,
                                clockid_t clock,
                                const timespec* time)
    {
        static constinit Original original (__func__);
        return original.noteAndCall (condition, mutex, clock, time);
    }

    int pthread_barrier_wait (pthread_barrier_t* barrier) noexcept
    {
        static constinit Original original (__func__);
        return original.noteAndCall (barrier);
    }

    int pthread_join (pthread_t thread, void** result)
    {
        static constinit Original original (__func__);
        return original.noteAndCall (thread, result);
    }

    int sem_wait (sem_t* semaphore)
    {
        static constinit Original original (__func__);
        return original.noteAndCall (semaphore);
    }

    int sem_timedwait (sem_t* semaphore, const timespec* time)
    {
        static constinit Original original (__func__);
        return original.noteAndCall (semaphore, time);
    }

    int sem_clockwait (sem_t* semaphore, clockid_t clock, const timespec* time)
    {
        static constinit Original original (__func__);
        return original.noteAndCall (semaphore, clock, time);
    }

    int nanosleep (const timespec* time, timespec* rest)
    {
        static constinit Original original (__func__);
        return original.noteAndCall (time, rest);
    }

    int clock_nanosleep (clockid_t clock, int flags, const timespec* time, timespec* rest)
    {
        static constinit Original original (__func__);
        return original.noteAndCall (clock, flags, time, rest);
    }

    int usleep (useconds_t microseconds)
    {
        static constinit Original original (__func__);
        return original.noteAndCall (microseconds);
    }

    unsigned int sleep (unsigned int seconds)
    {
        static constinit Original original (__func__);
        return (unsigned int) original.noteAndCall (seconds);
    }

    int sched_yield() noexcept
    {
        static constinit Original original (__func__);
        original.note (nullptr);
        return original.call();
    }

    int poll (pollfd* files, nfds_t count, int timeoutMilliseconds)
    {
        static constinit Original original (__func__);
        return original.noteAndCall (files, count, timeoutMilliseconds);
    }

    int select (int count, fd_set* reading, fd_set* writing, fd_set* failing, timeval* timeout)
    {
        static constinit Original original (__func__);
        return original.noteAndCall (count, reading, writing, failing, timeout);
    }

    // This is how std::atomic waits.
    long syscall (long number, ...) noexcept
    {
        va_list list;
        va_start (list, number);
        std::array<long, 6> arguments {};

        for (auto& argument : arguments)
            argument = va_arg (list, long);

        va_end (list);

        static constinit Original original (__func__);

        if (number == SYS_futex && waits (arguments[1]))
            original.note (reinterpret_cast<const void*> (arguments[0]));

        // Those of them that the system call doesn't take are of no account.
        const auto [a, b, c, d, e, f] = arguments;
        return original.call<long> (number, a, b, c, d, e, f);
    }
}

#pragma GCC visibility pop
