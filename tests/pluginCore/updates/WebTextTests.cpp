#include "pluginCore/updates/WebText.h"

#include "pluginCore/updates/BackgroundThreads.h"
#include "support/HttpServer.h"
#include "support/MessageLoop.h"
#include "support/StuckAddresses.h"

#include <gmock/gmock.h>

namespace cv::pluginCore
{
namespace
{
using cv::test::HttpReply;
using cv::test::HttpServer;
using cv::test::runMessageLoopUntil;
using cv::test::StuckNameLookup;

using Manner = HttpReply::Manner;

/** Far below any time limit of the network, and enough on a machine that is busy with other things. */
constexpr double promptMilliseconds = 5000.0;

constexpr juce::int64 maxBytes = 8 * 1024 * 1024;

std::optional<juce::String> read (const juce::URL& url)
{
    return readWebText (url, maxBytes, [] { return true; });
}

juce::String repeat (const juce::String& text, int numBytes)
{
    return juce::String::repeatedString (text, numBytes / (int) text.getNumBytesAsUTF8());
}

bool waitUntilBackgroundIsQuiet()
{
    return runMessageLoopUntil ([] { return BackgroundThreads::getNumRunning() == 0; });
}

class WebTextTest : public testing::Test
{
protected:
    std::optional<juce::String> readReply (const HttpReply& reply)
    {
        server.setReply ("/page", reply);
        return read (server.getUrl ("/page"));
    }

    HttpServer server;
};

TEST_F (WebTextTest, IsTheBodyAsItStands)
{
    for (const auto* body : { "", "text", " \r\n text; with \"quotes\"\n\n", "\xc3\xa9t\xc3\xa9 \xe2\x82\xac" })
        EXPECT_EQ (readReply (HttpReply::page (juce::String::fromUTF8 (body))), juce::String::fromUTF8 (body));
}

TEST_F (WebTextTest, SendsAPlainGet)
{
    readReply (HttpReply::page ("text"));

    ASSERT_EQ (server.getRequests().size(), 1);
    const auto lines = juce::StringArray::fromLines (server.getRequests()[0]);

    EXPECT_EQ (lines[0], "GET /page HTTP/1.1");

    std::vector<juce::String> names;

    for (auto i = 1; lines[i].isNotEmpty(); ++i)
        names.push_back (lines[i].upToFirstOccurrenceOf (":", false, false));

    EXPECT_THAT (names, testing::UnorderedElementsAre ("Host", "User-Agent", "Accept"));
}

TEST_F (WebTextTest, TakesAnswersOfAnyStatus)
{
    for (const auto* status : { "404 Not Found", "500 Internal Server Error", "201 Created" })
    {
        auto reply = HttpReply::page ("text");
        reply.status = status;
        EXPECT_EQ (readReply (reply), juce::String ("text")) << status;
    }
}

TEST_F (WebTextTest, FollowsUpToFiveRedirects)
{
    server.setReply ("/redirect/0", HttpReply::page ("text"));

    for (auto i = 1; i <= 6; ++i)
        server.setReply ("/redirect/" + juce::String (i), HttpReply::redirect ("/redirect/" + juce::String (i - 1)));

    EXPECT_EQ (read (server.getUrl ("/redirect/5")), juce::String ("text"));
    EXPECT_EQ (server.getRequests().size(), 6);

    EXPECT_EQ (read (server.getUrl ("/redirect/6")), std::nullopt);
    EXPECT_EQ (server.getRequests().size(), 12);
}

TEST_F (WebTextTest, EndlessRedirectsGiveNothing)
{
    EXPECT_EQ (readReply (HttpReply::redirect ("/page")), std::nullopt);
    EXPECT_EQ (server.getRequests().size(), 6);
}

TEST_F (WebTextTest, ReadsFiveMegabytes)
{
    const auto body = repeat ("0123456789abcde\n", 5 * 1024 * 1024);
    EXPECT_EQ (readReply (HttpReply::page (body)), body);
}

TEST_F (WebTextTest, OneByteBeyondTheLimitGivesNothing)
{
    for (const auto limit : { 1, 10, 4096, 262144 })
    {
        for (const auto length : { limit - 1, limit, limit + 1 })
        {
            const auto body = juce::String::repeatedString ("x", length);
            const auto path = "/" + juce::String (limit) + "/" + juce::String (length);
            server.setReply (path, HttpReply::page (body));

            const auto text = readWebText (server.getUrl (path), limit, [] { return true; });
            EXPECT_EQ (text, length <= limit ? std::optional (body) : std::nullopt) << path;
        }
    }
}

TEST_F (WebTextTest, RedirectsAreRelativeToTheirPage)
{
    server.setReply ("/folder/target", HttpReply::page ("target"));
    server.setReply ("/folder/target?a=1&b=%20", HttpReply::page ("query"));
    server.setReply ("/root", HttpReply::page ("root"));
    const auto own = server.getUrl ({}).toString (true);

    const std::pair<juce::String, const char*> locations[] {
        { "target", "target" },
        { "/folder/target", "target" },
        { "  target#part ", "target" },
        { "../root", "root" },
        { "/other/../root", "root" },
        { own + "/root", "root" },
        { own.replace ("http", "HTTP") + "/root", "root" },
        { own.fromFirstOccurrenceOf ("http:", false, false) + "/root", "root" },
        { "/folder/target?a=1&b=%20", "query" },
        { "?again", "again" },
    };

    server.setReply ("/folder/page?again", HttpReply::page ("again"));

    for (const auto& [location, text] : locations)
    {
        server.setReply ("/folder/page", HttpReply::redirect (location));
        EXPECT_EQ (read (server.getUrl ("/folder/page")), juce::String (text)) << location;
    }

    auto tight = HttpReply::redirect ({});
    tight.headers = { "location:/root" };
    EXPECT_EQ (readReply (tight), juce::String ("root"));
}

TEST_F (WebTextTest, RedirectsLeadToWebPagesOnly)
{
    const auto host = server.getUrl ({}).toString (true).fromFirstOccurrenceOf ("http", false, false);

    for (const auto* scheme :
         { "ftp", "ftps", "file", "gopher", "dict", "telnet", "smb", "ldap", "javascript", "data" })
    {
        const auto numConnections = server.getNumConnections();
        EXPECT_EQ (readReply (HttpReply::redirect (scheme + host + "/page")), std::nullopt) << scheme;
        EXPECT_EQ (server.getNumConnections(), numConnections + 1) << scheme;
    }

    EXPECT_EQ (readReply (HttpReply::redirect ("file:///etc/hostname")), std::nullopt);
    EXPECT_EQ (readReply (HttpReply::redirect ("http:/page")), std::nullopt);
}

TEST_F (WebTextTest, AllKindsOfRedirectsAreFollowed)
{
    server.setReply ("/target", HttpReply::page ("text"));

    for (const auto* status :
         { "301 Moved Permanently", "302 Found", "303 See Other", "307 Temporary Redirect", "308 Permanent Redirect" })
    {
        auto reply = HttpReply::redirect ("/target");
        reply.status = status;
        EXPECT_EQ (readReply (reply), juce::String ("text")) << status;
    }

    // Other answers with an address, and redirects without one, are pages like any other.
    for (const auto* status : { "200 OK", "201 Created", "300 Multiple Choices", "304 Not Modified", "404 Not Found" })
    {
        auto reply = HttpReply::redirect ("/target");
        reply.status = status;
        EXPECT_NE (readReply (reply), juce::String ("text")) << status;
    }

    auto reply = HttpReply::page ("nowhere");
    reply.status = "302 Found";
    EXPECT_EQ (readReply (reply), juce::String ("nowhere"));
}

TEST (WebText, RedirectsFromAddressesOfAllForms)
{
    const auto resolve = [] (const char* from, const char* location)
    {
        const auto target = resolveRedirect (juce::URL (from), location);
        return target.has_value() ? target->toString (true) : juce::String ("none");
    };

    EXPECT_EQ (resolve ("https://a.example/b/c?d=e", "f"), "https://a.example/b/f");
    EXPECT_EQ (resolve ("https://a.example/b/c?d=e/f", "g"), "https://a.example/b/g");
    EXPECT_EQ (resolve ("https://a.example/b/c", "//f.example/g"), "https://f.example/g");
    EXPECT_EQ (resolve ("https://a.example:1/b/c", "/g"), "https://a.example:1/g");
    EXPECT_EQ (resolve ("https://a.example", "g"), "https://a.example/g");
    EXPECT_EQ (resolve ("https://a.example", "/g"), "https://a.example/g");
    EXPECT_EQ (resolve ("https://a.example/b", "?g"), "https://a.example/b?g");
    EXPECT_EQ (resolve ("https://a.example/b", "g h"), "https://a.example/g%20h");
    EXPECT_EQ (resolve ("https://a.example/b", "g?h=i:j"), "https://a.example/g?h=i:j");
    EXPECT_EQ (resolve ("https://a.example/b", "http://f.example/?g=h&i"), "http://f.example/?g=h&i");
    EXPECT_EQ (resolve ("https://a.example/b", "#c"), "none");
    EXPECT_EQ (resolve ("https://a.example/b", ""), "none");
    EXPECT_EQ (resolve ("https://a.example/b", "mailto:f@f.example"), "none");
    EXPECT_EQ (resolve ("https://a.example/b", "HTTPX://f.example"), "none");
    EXPECT_EQ (resolve ("", "g"), "none");
}

TEST (WebText, BytesThatAreNoUtf8AreCharacters)
{
    using std::pair;

    for (const auto& [bytes, text] :
         { pair ("", ""), pair ("a", "a"), pair ("\xc3\xa9", "\xc3\xa9"),
           pair ("\xef\xbb\xbfwith a mark", "with a mark"), pair ("Caf\xe9", "Caf\xc3\xa9"), pair ("\xe9", "\xc3\xa9"),
           pair ("\xf0\x9f\x98", "\xc3\xb0\xc2\x9f\xc2\x98"), pair ("\xed\xa0\x80", "\xc3\xad\xc2\xa0\xc2\x80") })
    {
        // In memory of exactly that size, so that a sanitizer sees what is read beyond it.
        const std::vector<char> body (bytes, bytes + std::strlen (bytes));
        EXPECT_EQ (decodeWebText (body.data(), body.size()), juce::String::fromUTF8 (text)) << text;
    }

    EXPECT_EQ (decodeWebText ("a\0b", 3), "a");
}

TEST_F (WebTextTest, ABodyBeyondTheLimitGivesNothing)
{
    auto reply = HttpReply::page (repeat ("0123456789abcde\n", 1024 * 1024));
    reply.manner = Manner::endless;
    EXPECT_EQ (readReply (reply), std::nullopt);
    EXPECT_TRUE (runMessageLoopUntil ([this] { return server.getNumOpenConnections() == 0; }));
}

TEST_F (WebTextTest, WaitsForALateAnswer)
{
    auto reply = HttpReply::page ("text");
    reply.delayMilliseconds = 300;
    EXPECT_EQ (readReply (reply), juce::String ("text"));
}

TEST_F (WebTextTest, WaitsForAByteASecond)
{
    auto reply = HttpReply::page ("ab");
    reply.manner = Manner::byteASecond;
    EXPECT_EQ (readReply (reply), juce::String ("ab"));
}

TEST_F (WebTextTest, ABrokenAnswerGivesNothing)
{
    auto reply = HttpReply::page ("text");
    reply.manner = Manner::brokenOff;
    EXPECT_EQ (readReply (reply), std::nullopt);

    // The part that came is read before the break is known.
    reply.closingDelayMilliseconds = 100;
    EXPECT_EQ (readReply (reply), std::nullopt);
}

TEST_F (WebTextTest, AClosedConnectionGivesNothing)
{
    auto reply = HttpReply::page ("text");
    reply.manner = Manner::closed;
    EXPECT_EQ (readReply (reply), std::nullopt);
}

TEST (WebText, NoServerGivesNothing)
{
    juce::URL url;

    {
        const HttpServer server;
        url = server.getUrl ("/page");
    }

    EXPECT_EQ (read (url), std::nullopt);
    EXPECT_EQ (read (juce::URL ("http://unknown.example/page")), std::nullopt);
    EXPECT_EQ (read (juce::URL ("https://unknown.example/page")), std::nullopt);
    EXPECT_EQ (read ({}), std::nullopt);
}

TEST_F (WebTextTest, MakesNoRequestWhenItIsNotToContinue)
{
    EXPECT_EQ (readWebText (server.getUrl ("/page"), maxBytes, [] { return false; }), std::nullopt);
    cv::test::runMessageLoopFor (50);
    EXPECT_EQ (server.getNumConnections(), 0);
}

/** How long readWebText() takes to return once it isn't to continue, in milliseconds. */
double measureGivingUp (const juce::URL& url, const std::function<bool()>& isHanging)
{
    auto timeOfSayingNo = 0.0;

    const auto text = readWebText (url, maxBytes,
                                   [&]
                                   {
                                       if (! isHanging())
                                           return true;

                                       timeOfSayingNo = juce::Time::getMillisecondCounterHiRes();
                                       return false;
                                   });

    EXPECT_EQ (text, std::nullopt);
    EXPECT_GT (timeOfSayingNo, 0.0);
    return juce::Time::getMillisecondCounterHiRes() - timeOfSayingNo;
}

TEST_F (WebTextTest, LeavesASilentServerAtOnce)
{
    HttpReply reply;
    reply.manner = Manner::silent;
    server.setReply ("/page", reply);

    EXPECT_LT (measureGivingUp (server.getUrl ("/page"), [this] { return server.getRequests().size() == 1; }),
               promptMilliseconds);

    EXPECT_TRUE (waitUntilBackgroundIsQuiet());
    EXPECT_TRUE (runMessageLoopUntil ([this] { return server.getNumOpenConnections() == 0; }));
}

TEST_F (WebTextTest, LeavesANameLookupAtOnce)
{
    {
        const StuckNameLookup lookup;
        const juce::URL url ("http://" + juce::String (StuckNameLookup::host));

        EXPECT_LT (measureGivingUp (url, [&] { return lookup.getNumWaiting() == 1; }), promptMilliseconds);
        EXPECT_GE (BackgroundThreads::getNumRunning(), 1);
        EXPECT_EQ (lookup.getNumWaiting(), 1);
    }

    EXPECT_TRUE (waitUntilBackgroundIsQuiet());
    EXPECT_EQ (readReply (HttpReply::page ("text")), juce::String ("text"));
}
} // namespace
} // namespace cv::pluginCore
