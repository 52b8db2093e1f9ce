#include "support/TemporaryHome.h"

#include <cstdlib>

namespace cv::test
{
TemporaryHome::TemporaryHome() : formerHome (juce::SystemStats::getEnvironmentVariable ("HOME", {}))
{
    setenv ("HOME", getFolder().getFullPathName().toRawUTF8(), 1);
}

TemporaryHome::~TemporaryHome()
{
    setenv ("HOME", formerHome.toRawUTF8(), 1);
}
} // namespace cv::test
