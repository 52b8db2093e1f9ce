// Preloaded into a program, it keeps all look-ups of names from ending, and says so with an empty file at the path
// that the variable STUCK_LOOKUP_SIGN holds.

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

struct addrinfo;

extern "C" __attribute__ ((visibility ("default"))) int getaddrinfo (const char*,
                                                                     const char*,
                                                                     const addrinfo*,
                                                                     addrinfo**)
{
    if (const auto* const path = std::getenv ("STUCK_LOOKUP_SIGN"))
        close (open (path, O_CREAT | O_WRONLY, 0600));

    while (true)
        pause();
}
