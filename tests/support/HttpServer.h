#pragma once

#include <juce_core/juce_core.h>

#include <map>

namespace cv::test
{
/** What HttpServer answers to a request. */
struct HttpReply
{
    enum class Manner
    {
        complete,    ///< status, headers and body
        silent,      ///< takes the request and never says anything
        byteASecond, ///< status and headers, then the body a byte a second
        brokenOff,   ///< announces twice the body's length and closes behind the body
        closed,      ///< closes without a word
        endless      ///< sends the body over and over again
    };

    /** A page with status 200. */
    static HttpReply page (const juce::String& body);

    /** A redirect to another path of the same server. */
    static HttpReply redirect (const juce::String& path);

    juce::String status { "200 OK" };

    /** Further header lines, without line ends. */
    juce::StringArray headers;

    juce::String body;
    Manner manner = Manner::complete;

    /** How long the server thinks before it answers. */
    int delayMilliseconds = 0;

    /** How long it keeps the connection behind the answer. */
    int closingDelayMilliseconds = 0;
};

/** A small web server on a free port of the loopback address, for as long as it lives. It answers each
    request on a thread of its own by a script, with "404 Not Found" where there is none for the path, and
    closes the connection behind each answer.

    Clients' proxy settings are switched off for the loopback address in this process.
*/
class HttpServer
{
public:
    HttpServer();
    ~HttpServer();

    /** The address of a path, which starts with a slash. */
    juce::URL getUrl (const juce::String& path) const;

    void setReply (const juce::String& path, const HttpReply&);

    /** The requests so far, each with its headers, as they came. */
    juce::StringArray getRequests() const;

    /** The connections so far, with or without a request on them. */
    int getNumConnections() const;

    int getNumOpenConnections() const;

private:
    class Acceptor;
    class Connection;

    /** The reply to a request, whose first line is "GET <path> HTTP/1.1". */
    HttpReply takeRequest (const juce::String& request);

    juce::CriticalSection lock;
    std::map<juce::String, HttpReply> replies;
    juce::StringArray requests;
    juce::OwnedArray<Connection> connections;
    std::unique_ptr<Acceptor> acceptor;

    JUCE_DECLARE_NON_COPYABLE (HttpServer)
};
} // namespace cv::test
