#include "support/HttpServer.h"

#include <csignal>
#include <cstdlib>
#include <pthread.h>

namespace cv::test
{
namespace
{
const juce::String endOfHead = "\r\n\r\n";

constexpr int pollMilliseconds = 20;
constexpr int maxWriteBytes = 65536;

/** To write to a client that has gone is an error here, not a signal that ends the program. */
void blockBrokenPipeSignal()
{
    sigset_t signals;
    sigemptyset (&signals);
    sigaddset (&signals, SIGPIPE);
    pthread_sigmask (SIG_BLOCK, &signals, nullptr);
}
} // namespace

HttpReply HttpReply::page (const juce::String& body)
{
    HttpReply reply;
    reply.body = body;
    return reply;
}

HttpReply HttpReply::redirect (const juce::String& path)
{
    HttpReply reply;
    reply.status = "302 Found";
    reply.headers.add ("Location: " + path);
    return reply;
}

/** One client, from its connecting to its going. */
class HttpServer::Connection final : public juce::Thread
{
public:
    Connection (HttpServer& owner, std::unique_ptr<juce::StreamingSocket> clientSocket)
        : Thread ("Test Connection")
        , server (owner)
        , socket (std::move (clientSocket))
    {
        startThread();
    }

    ~Connection() override { stopThread (-1); }

private:
    void run() override
    {
        blockBrokenPipeSignal();

        if (const auto request = readRequest(); request.isNotEmpty())
            answer (server.takeRequest (request));

        socket->close();
    }

    juce::String readRequest()
    {
        juce::MemoryOutputStream request;

        while (! request.toString().contains (endOfHead))
        {
            char byte = 0;

            if (! waitForClient() || socket->read (&byte, 1, false) != 1)
                return {};

            request.writeByte (byte);
        }

        return request.toString();
    }

    /** True when there is something to read, be it that the client has closed. */
    bool waitForClient()
    {
        while (! threadShouldExit())
            if (socket->waitUntilReady (true, pollMilliseconds) != 0)
                return true;

        return false;
    }

    /** False when the client has gone, or the server is to. */
    bool pause (int milliseconds)
    {
        const auto end = juce::Time::getMillisecondCounterHiRes() + milliseconds;

        while (juce::Time::getMillisecondCounterHiRes() < end)
        {
            char byte = 0;

            if (threadShouldExit() || (socket->waitUntilReady (true, 0) != 0 && socket->read (&byte, 1, false) <= 0))
                return false;

            wait (juce::jlimit (1, pollMilliseconds, milliseconds));
        }

        return true;
    }

    void answer (const HttpReply& reply)
    {
        using Manner = HttpReply::Manner;

        if (reply.manner == Manner::closed || ! pause (reply.delayMilliseconds))
            return;

        if (reply.manner == Manner::silent)
        {
            while (pause (1000))
            {
            }
            return;
        }

        if (! write (getHead (reply)))
            return;

        do
        {
            if (reply.manner == Manner::byteASecond ? ! writeSlowly (reply.body) : ! write (reply.body))
                return;
        } while (reply.manner == Manner::endless);

        pause (reply.closingDelayMilliseconds);
    }

    static juce::String getHead (const HttpReply& reply)
    {
        juce::StringArray lines { "HTTP/1.1 " + reply.status, "Connection: close" };
        lines.addArray (reply.headers);

        if (reply.manner != HttpReply::Manner::endless)
        {
            const auto factor = reply.manner == HttpReply::Manner::brokenOff ? 2 : 1;
            lines.add ("Content-Length: " + juce::String (factor * (juce::int64) reply.body.getNumBytesAsUTF8()));
        }

        return lines.joinIntoString ("\r\n") + endOfHead;
    }

    bool write (const juce::String& text)
    {
        const auto* data = text.toRawUTF8();

        for (auto left = (int) text.getNumBytesAsUTF8(); left > 0;)
        {
            if (threadShouldExit())
                return false;

            if (socket->waitUntilReady (false, pollMilliseconds) == 0)
                continue;

            const auto written = socket->write (data, juce::jmin (left, maxWriteBytes));

            if (written <= 0)
                return false;

            data += written;
            left -= written;
        }

        return true;
    }

    bool writeSlowly (const juce::String& text)
    {
        for (auto character : text)
            if (! write (juce::String::charToString (character)) || ! pause (1000))
                return false;

        return true;
    }

    HttpServer& server;
    const std::unique_ptr<juce::StreamingSocket> socket;

    JUCE_DECLARE_NON_COPYABLE (Connection)
};

class HttpServer::Acceptor final : public juce::Thread
{
public:
    explicit Acceptor (HttpServer& owner) : Thread ("Test Server"), server (owner)
    {
        socket.createListener (0, "127.0.0.1");
        startThread();
    }

    ~Acceptor() override { stopThread (-1); }

    int getPort() const { return socket.getBoundPort(); }

private:
    void run() override
    {
        while (! threadShouldExit())
        {
            if (socket.waitUntilReady (true, pollMilliseconds) <= 0)
                continue;

            if (auto client = juce::rawToUniquePtr (socket.waitForNextConnection()))
            {
                const juce::ScopedLock scopedLock (server.lock);
                server.connections.add (new Connection (server, std::move (client)));
            }
        }
    }

    HttpServer& server;
    juce::StreamingSocket socket;

    JUCE_DECLARE_NON_COPYABLE (Acceptor)
};

HttpServer::HttpServer() : acceptor (std::make_unique<Acceptor> (*this))
{
    setenv ("no_proxy", "127.0.0.1", 1);
}

HttpServer::~HttpServer()
{
    acceptor.reset();
    connections.clear();
}

juce::URL HttpServer::getUrl (const juce::String& path) const
{
    return juce::URL ("http://127.0.0.1:" + juce::String (acceptor->getPort()) + path);
}

void HttpServer::setReply (const juce::String& path, const HttpReply& reply)
{
    const juce::ScopedLock scopedLock (lock);
    replies[path] = reply;
}

juce::StringArray HttpServer::getRequests() const
{
    const juce::ScopedLock scopedLock (lock);
    return requests;
}

int HttpServer::getNumConnections() const
{
    const juce::ScopedLock scopedLock (lock);
    return connections.size();
}

int HttpServer::getNumOpenConnections() const
{
    const juce::ScopedLock scopedLock (lock);
    return (int) std::count_if (connections.begin(), connections.end(),
                                [] (const auto* connection) { return connection->isThreadRunning(); });
}

HttpReply HttpServer::takeRequest (const juce::String& request)
{
    const auto path = request.fromFirstOccurrenceOf (" ", false, false).upToFirstOccurrenceOf (" ", false, false);

    const juce::ScopedLock scopedLock (lock);
    requests.add (request);

    if (const auto reply = replies.find (path); reply != replies.end())
        return reply->second;

    HttpReply notFound;
    notFound.status = "404 Not Found";
    return notFound;
}
} // namespace cv::test
