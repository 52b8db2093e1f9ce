#include "updates/WebText.h"

#include "updates/BackgroundThreads.h"

namespace cv::pluginCore
{
namespace
{
constexpr int maxRedirects = 5;

/** One request. It is shared by the thread that waits for it, the thread that makes it and, once it is
    cancelled, the thread that does so; the last of them deletes it.

    juce::URL::createInputStream makes the same stream with the same settings but keeps it to itself until
    the server has answered. A server that never does so could then not be left: JUCE asks its progress
    callback only about data to be posted.
*/
class Transfer
{
public:
    explicit Transfer (const juce::URL& address) : url (address) {}

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

    /** The stream is made and deleted here rather than by the waiting thread, since both steps may have to
        wait for a lock that all requests of the process share.
    */
    std::optional<juce::String> read()
    {
        const auto newStream = std::make_shared<juce::WebInputStream> (url, false);
        newStream->withNumRedirectsToFollow (maxRedirects);

        if (! publish (newStream))
            return {};

        auto result = readWhole (*newStream);
        publish (nullptr);
        return result;
    }

    /** Makes the stream known to cancel(). False when that has already been called. */
    bool publish (Stream newStream)
    {
        const juce::ScopedLock scopedLock (lock);
        stream = std::move (newStream);
        return ! cancelled;
    }

    static std::optional<juce::String> readWhole (juce::WebInputStream& source)
    {
        if (! source.connect (nullptr))
            return {};

        juce::MemoryOutputStream body;

        if (body.writeFromInputStream (source, maxWebTextBytes + 1) > maxWebTextBytes || source.isError())
            return {};

        return body.toString();
    }

    const juce::URL url;
    std::optional<juce::String> text;
    const juce::WaitableEvent finished { true };

    juce::CriticalSection lock;
    Stream stream;
    bool cancelled = false;

    JUCE_DECLARE_NON_COPYABLE_WITH_LEAK_DETECTOR (Transfer)
};
} // namespace

std::optional<juce::String> readWebText (const juce::URL& url, const std::function<bool()>& shouldContinue)
{
    const auto transfer = std::make_shared<Transfer> (url);

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
