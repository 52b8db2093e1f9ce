// Preloaded into a program, it is as if the network library were not installed. Says with an empty file at the path
// that the variable MISSING_CURL_SIGN holds that it was asked for.

#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <unistd.h>

extern "C" __attribute__ ((visibility ("default"))) void* dlopen (const char* file, int mode)
{
    static const auto open = reinterpret_cast<void* (*) (const char*, int)> (dlsym (RTLD_NEXT, "dlopen"));

    if (file == nullptr || std::strstr (file, "libcurl") == nullptr)
        return open (file, mode);

    if (const auto* const path = std::getenv ("MISSING_CURL_SIGN"))
        close (::open (path, O_CREAT | O_WRONLY, 0600));

    return nullptr;
}
