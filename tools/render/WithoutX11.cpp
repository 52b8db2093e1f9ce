// What stands in for DisplayConnection.cpp where there is no X11: a connection that is never made.

#include "DisplayConnection.h"
#include "RenderError.h"

namespace cv::render
{
struct DisplayConnection::Server
{
};

DisplayConnection::DisplayConnection()
{
    throw RenderError ("no display: pictures of the editor are taken from an X server, which there is only on Linux");
}

DisplayConnection::~DisplayConnection() = default;

int DisplayConnection::countVisibleLevels (void*) const
{
    return 0;
}

juce::Image DisplayConnection::capture (void*) const
{
    return {};
}
} // namespace cv::render
