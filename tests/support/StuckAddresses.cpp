#include "support/StuckAddresses.h"

#include <arpa/inet.h>
#include <condition_variable>
#include <dlfcn.h>
#include <mutex>
#include <netdb.h>
#include <netinet/in.h>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

namespace cv::test
{
namespace
{
struct Lookups
{
    std::mutex mutex;
    std::condition_variable released;
    bool stuck = false;
    int numWaiting = 0;
};

Lookups& getLookups()
{
    static Lookups lookups;
    return lookups;
}

void waitForRelease()
{
    auto& lookups = getLookups();
    std::unique_lock lock (lookups.mutex);

    ++lookups.numWaiting;
    lookups.released.wait (lock, [&] { return ! lookups.stuck; });
    --lookups.numWaiting;
}
} // namespace

UnacceptingServer::UnacceptingServer()
{
    sockaddr_in address {};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl (INADDR_LOOPBACK);
    socklen_t length = sizeof (address);

    const auto listener = socket (AF_INET, SOCK_STREAM, 0);
    sockets.add (listener);
    bind (listener, reinterpret_cast<sockaddr*> (&address), length);
    listen (listener, 0);
    getsockname (listener, reinterpret_cast<sockaddr*> (&address), &length);
    port = ntohs (address.sin_port);

    // A queue of length 0 takes one connection or two; these don't wait for theirs.
    for (auto i = 0; i < 4; ++i)
    {
        sockets.add (socket (AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0));
        connect (sockets.getLast(), reinterpret_cast<sockaddr*> (&address), length);
    }
}

UnacceptingServer::~UnacceptingServer()
{
    for (const auto handle : sockets)
        close (handle);
}

juce::URL UnacceptingServer::getUrl() const
{
    return juce::URL ("http://127.0.0.1:" + juce::String (port));
}

StuckNameLookup::StuckNameLookup()
{
    auto& lookups = getLookups();
    const std::lock_guard lock (lookups.mutex);
    lookups.stuck = true;
}

StuckNameLookup::~StuckNameLookup()
{
    auto& lookups = getLookups();

    {
        const std::lock_guard lock (lookups.mutex);
        lookups.stuck = false;
    }

    lookups.released.notify_all();
}

int StuckNameLookup::getNumWaiting() const
{
    auto& lookups = getLookups();
    const std::lock_guard lock (lookups.mutex);
    return lookups.numWaiting;
}
} // namespace cv::test

// Stands before the C library's function of the same name, for the shared libraries of the process too.
extern "C" __attribute__ ((visibility ("default"))) int getaddrinfo (const char* host,
                                                                     const char* service,
                                                                     const addrinfo* hints,
                                                                     addrinfo** result)
{
    const std::string_view name (host != nullptr ? host : "");

    if (name == cv::test::StuckNameLookup::host)
        cv::test::waitForRelease();

    if (name.ends_with (".example"))
        return EAI_NONAME;

    static const auto original = reinterpret_cast<decltype (&getaddrinfo)> (dlsym (RTLD_NEXT, "getaddrinfo"));
    return original (host, service, hints, result);
}
