#include "pluginCore/updates/WebText.h"

#include "pluginCore/state/Utf8.h"
#include "pluginCore/updates/BackgroundThreads.h"

#include <algorithm>

namespace cv::pluginCore
{
namespace
{
constexpr int maxRedirects = 5;

/** Whether an answer of this status leads elsewhere if it comes with an address. */
bool isRedirect (int status) noexcept
{
    constexpr int statuses[] { 301, 302, 303, 307, 308 };
    return std::find (std::begin (statuses), std::end (statuses), status) != std::end (statuses);
}

/** The address of a redirect; empty if there is none. JUCE reads headers only if a space follows the colon. */
juce::String getLocation (juce::WebInputStream& stream)
{
    constexpr auto header = "Location";
    const auto headers = stream.getResponseHeaders();

    if (const auto& location = headers[header]; location.isNotEmpty())
        return location;

    for (const auto& key : headers.getAllKeys())
        if (key.startsWithIgnoreCase (juce::String (header) + ":"))
            return key.fromFirstOccurrenceOf (":", false, false);

    return {};
}

bool isWebAddress (const juce::String& address)
{
    return address.startsWithIgnoreCase ("http://") || address.startsWithIgnoreCase ("https://");
}

/** JUCE loads the network library when it is first used, and takes for granted that it is there. */
bool isNetworkThere()
{
#if JUCE_LOAD_CURL_SYMBOLS_LAZILY && (JUCE_LINUX || JUCE_BSD)
    // The names that JUCE tries.
    for (const auto* name :
         { "libcurl.so", "libcurl.so.4", "libcurl.so.3", "libcurl-gnutls.so.4", "libcurl-gnutls.so.3" })
        if (juce::DynamicLibrary library; library.open (name))
            return true;

    return false;
#else
    return true;
#endif
}

/** Whether a text begins with the name of a scheme, as all addresses do that aren't relative. */
bool hasScheme (const juce::String& location)
{
    const auto name = location.initialSectionNotContaining (":/?#");
    return name.length() < location.length() && location[name.length()] == ':';
}

/** One request. It is shared by the thread that waits for it, the thread that makes it and, once it is
    cancelled, the thread that does so; the last of them deletes it.

    juce::URL::createInputStream makes the same stream with the same settings but keeps it to itself until
    the server has answered. A server that never does so could then not be left: JUCE asks its progress
    callback only about data to be posted.
*/
class Transfer
{
public:
    Transfer (const juce::URL& address, juce::int64 byteLimit) : url (address), maxBytes (byteLimit) {}

    /** Makes the request, and blocks as long as it takes. */
    void run()
    {
        text = read();
        finished.signal();
    }

    bool waitUntilFinished (int milliseconds) const { return finished.wait (milliseconds); }

    /** What came, once waitUntilFinished() has said true. */
    const std::optional<juce::String>& getText() const { return text; }

    /** Makes run() return soon. May block: the network library waits for a name look-up to end. */
    void cancel()
    {
        Stream current;

        {
            const juce::ScopedLock scopedLock (lock);
            cancelled = true;
            current = stream;
        }

        if (current != nullptr)
            current->cancel();
    }

private:
    using Stream = std::shared_ptr<juce::WebInputStream>;

    /** Follows redirects by itself: the network library would take some of them to other protocols. */
    std::optional<juce::String> read()
    {
        if (! isNetworkThere())
            return {};

        std::optional address (url);

        for (auto numRedirects = 0; address.has_value() && numRedirects <= maxRedirects; ++numRedirects)
        {
            // Made and deleted here rather than by the waiting thread, since both steps may have to wait for a
            // lock that all requests of the process share.
            const auto newStream = std::make_shared<juce::WebInputStream> (*address, false);
            newStream->withNumRedirectsToFollow (0);

            if (! publish (newStream))
                return {};

            const auto result = readWhole (*newStream, address);
            publish (nullptr);

            if (result.has_value())
                return result;
        }

        return {};
    }

    /** Makes the stream known to cancel(). False when that has already been called. */
    bool publish (Stream newStream)
    {
        const juce::ScopedLock scopedLock (lock);
        stream = std::move (newStream);
        return ! cancelled;
    }

    /** What came from the address; if nothing did, the address is that of the next request, or none. */
    std::optional<juce::String> readWhole (juce::WebInputStream& source, std::optional<juce::URL>& address) const
    {
        const auto from = *std::exchange (address, std::nullopt);

        if (! source.connect (nullptr))
            return {};

        if (const auto location = getLocation (source); location.isNotEmpty() && isRedirect (source.getStatusCode()))
        {
            address = resolveRedirect (from, location);
            return {};
        }

        juce::MemoryOutputStream body;

        if (body.writeFromInputStream (source, maxBytes + 1) > maxBytes || source.isError())
            return {};

        return decodeWebText (body.getData(), body.getDataSize());
    }

    const juce::URL url;
    const juce::int64 maxBytes;
    std::optional<juce::String> text;
    const juce::WaitableEvent finished { true };

    juce::CriticalSection lock;
    Stream stream;
    bool cancelled = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (Transfer)
};
} // namespace

juce::String decodeWebText (const void* bytes, size_t numBytes)
{
    const auto* const characters = static_cast<const char*> (bytes);

    if (isWellFormedUtf8 (characters, numBytes))
        return juce::String::createStringFromData (characters, (int) numBytes);

    juce::MemoryOutputStream utf8;

    for (size_t i = 0; i < numBytes; ++i)
        utf8.appendUTF8Char ((juce::uint8) characters[i]);

    return utf8.toUTF8();
}

std::optional<juce::URL> resolveRedirect (const juce::URL& from, const juce::String& location)
{
    const auto target = location.trim().upToFirstOccurrenceOf ("#", false, false).replace (" ", "%20");
    const auto makeUrl = [] (const juce::String& address) -> std::optional<juce::URL>
    {
        if (isWebAddress (address))
            return juce::URL::createWithoutParsing (address);

        return {};
    };

    if (target.isEmpty() || hasScheme (target))
        return makeUrl (target);

    const auto origin = from.toString (true).upToFirstOccurrenceOf ("?", false, false);
    const auto scheme = origin.upToFirstOccurrenceOf ("//", false, false);

    if (target.startsWith ("//"))
        return makeUrl (scheme + target);

    if (target.startsWithChar ('?'))
        return makeUrl (origin + target);

    const auto hostAndPath = origin.substring (scheme.length() + 2);
    const auto server = scheme + "//" + hostAndPath.upToFirstOccurrenceOf ("/", false, false);

    if (target.startsWithChar ('/') || ! hostAndPath.containsChar ('/'))
        return makeUrl (server + (target.startsWithChar ('/') ? "" : "/") + target);

    // What "../" means is for the network library.
    return makeUrl (origin.upToLastOccurrenceOf ("/", true, false) + target);
}

std::optional<juce::String> readWebText (const juce::URL& url,
                                         juce::int64 maxBytes,
                                         const std::function<bool()>& shouldContinue)
{
    const auto transfer = std::make_shared<Transfer> (url, maxBytes);

    if (! shouldContinue() || ! BackgroundThreads::launch ("Web Request", [transfer] { transfer->run(); }))
        return {};

    while (! transfer->waitUntilFinished (webTextPollMilliseconds))
    {
        if (! shouldContinue())
        {
            BackgroundThreads::launch ("Web Request End", [transfer] { transfer->cancel(); });
            return {};
        }
    }

    return transfer->getText();
}
} // namespace cv::pluginCore
