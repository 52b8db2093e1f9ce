#pragma once

#include <juce_core/juce_core.h>

namespace cv::test
{
/** An address of this machine at which a connection never comes about, for as long as it lives: its
    listener takes no one, and its queue is full.
*/
class UnacceptingServer
{
public:
    UnacceptingServer();
    ~UnacceptingServer();

    juce::URL getUrl() const;

private:
    juce::Array<int> sockets;
    int port = 0;

    JUCE_DECLARE_NON_COPYABLE (UnacceptingServer)
};

/** Keeps look-ups of the name `host` from ending, in the whole process, for as long as it lives; they fail
    then. Without it they fail at once, as do look-ups of any name that ends in ".example": no test asks a
    name server. One at a time.
*/
class StuckNameLookup
{
public:
    StuckNameLookup();
    ~StuckNameLookup();

    static constexpr auto host = "stuck.example";

    /** The look-ups that are waiting now. */
    int getNumWaiting() const;

private:
    JUCE_DECLARE_NON_COPYABLE (StuckNameLookup)
};
} // namespace cv::test
